(print (eval '(+ 1 2)))                       ; expect: 3
(setq a 'b b 5)
(print (eval a))                              ; expect: 5
(print (apply '+ '(1 2 3)))                   ; expect: 6
(print (apply 'strcat '("a" "b")))            ; expect: "ab"
(print (apply '(lambda (x y) (- x y)) '(5 3))) ; expect: 2
(print (apply 'list nil))                     ; expect: nil
(print (mapcar '1+ '(10 20)))                 ; expect: (11 21)
(print (mapcar '+ '(1 2 3) '(10 20)))         ; expect: (11 22)
(print (mapcar 'list nil '(1)))               ; expect: nil
(print (mapcar 'mapcar '(1+ 1-) '((1 2) (3 4)))) ; expect: ((2 3) (2 3))
; Forms that are special may be handed on like any function.
(print (apply 'and '(1 2 nil)))               ; expect: nil
(print (apply 'or '(nil 2)))                  ; expect: T
(print (mapcar 'and '(1 nil) '(2 2)))         ; expect: (T nil)
(mapcar 'set '(p q) '(1 2))
(print (list p q))                            ; expect: (1 2)
(mapcar 'setq '(p q) '(3 (4 5)))
(print (list p q))                            ; expect: (3 (4 5))
(print (mapcar 'if '(t nil) '(1 2) '(3 4)))   ; expect: (1 4)
(print (apply 'progn '(a b)))                 ; expect: B
(print (mapcar 'quote '(a b)))                ; expect: (A B)
(print (mapcar 'eval '(b (+ 1 1))))           ; expect: (5 2)
(setq op '+)
(print ((eval op) 1 2))                       ; expect: 3
(print (set 'c 7))                            ; expect: 7
(print c)                                     ; expect: 7
(apply 'nosuch '(1))                          ; expect error: no function definition: NOSUCH
(apply 5 '(1))                                ; expect error: bad function: 5
(apply '+ 5)                                  ; expect error: bad argument type: listp 5
(apply '1+ '(1 2))                            ; expect error: too many arguments
(mapcar '1+)                                  ; expect error: too few arguments
(mapcar '1+ 5)                                ; expect error: bad argument type: listp 5
(mapcar 'car '(1))                            ; expect error: bad argument type: consp 1
(set 5 1)                                     ; expect error: bad argument type: symbolp 5
(eval)                                        ; expect error: too few arguments
(5 6)                                         ; expect error: bad function: 5
("f" 6)                                       ; expect error: bad function: "f"
(nosuch 1)                                    ; expect error: no function definition: NOSUCH
(setq s "text")
(s 1)                                         ; expect error: bad function: "text"
(+ 1 . 2)                                     ; expect error: bad argument list: (1 . 2)
