(print (quote (a . b)))                       ; expect: (A . B)
(print (setq a 1 b (+ a 1)))                  ; expect: 2
(print (setq))                                ; expect: nil
(print (if t 1 2))                            ; expect: 1
(print (if nil 1))                            ; expect: nil
(print (progn 1 2 3))                         ; expect: 3
(print (progn))                               ; expect: nil
(print (cond ((= a 2) "two") ((= a 1) "one") (t "many"))) ; expect: "one"
(print (cond (nil 1) (a)))                    ; expect: 1
(print (cond))                                ; expect: nil
(print (and 1 2))                             ; expect: T
(print (and))                                 ; expect: T
(print (and nil (car 5)))                     ; expect: nil
(print (or nil 5))                            ; expect: T
(print (or))                                  ; expect: nil
(setq n 0)
(print (while (< n 3) (setq n (1+ n))))       ; expect: 3
(print (repeat 4 (setq n (* n 2))))           ; expect: 48
(print (repeat 0 1))                          ; expect: nil
(print (repeat -2 1))                         ; expect: nil
(print (foreach x '(1 2 3) (setq n (+ n x)))) ; expect: 54
(print x)                                     ; expect: nil
(print (function car))                        ; expect: CAR
(print ((lambda (x) (* x x)) 5))              ; expect: 25
(print (mapcar (function (lambda (x) (1+ x))) '(1 2))) ; expect: (2 3)
(print (defun f (p / q) (setq q p)))          ; expect: F
(print (f 3))                                 ; expect: 3
(print (defun-q g (p) (1+ p)))                ; expect: G
(print (g 3))                                 ; expect: 4
(print (type g))                              ; expect: LIST
(print (defun-q-list-ref 'g))                 ; expect: ((P) (1+ P))
(defun-q-list-set 'g (append (defun-q-list-ref 'g) '((* p 10))))
(print (g 3))                                 ; expect: 30
(setq a)                                      ; expect error: too few arguments
(setq 1 2)                                    ; expect error: bad argument type: symbolp 1
(if)                                          ; expect error: too few arguments
(if 1 2 3 4)                                  ; expect error: too many arguments
(quote a b)                                   ; expect error: too many arguments
(cond 5)                                      ; expect error: bad argument type: consp 5
(while)                                       ; expect error: too few arguments
(repeat 2.0 1)                                ; expect error: bad argument type: fixnump: 2.0
(foreach 5 '(1) 1)                            ; expect error: bad argument type: symbolp 5
(foreach x 5 1)                               ; expect error: bad argument type: listp 5
(defun "f" ())                                ; expect error: bad argument type: symbolp "f"
(defun f)                                     ; expect error: too few arguments
(defun f (1) 2)                               ; expect error: bad argument type: symbolp 1
(lambda)                                      ; expect error: too few arguments
(function)                                    ; expect error: too few arguments
(defun-q g)                                   ; expect error: too few arguments
(defun-q-list-ref "g")                        ; expect error: bad argument type: symbolp "g"
(defun-q-list-set 'g 1)                       ; expect error: bad argument type: listp 1
(and (car 5))                                 ; expect error: bad argument type: consp 5
(or (nosuch))                                 ; expect error: no function definition: NOSUCH
(progn (+ 1 "a"))                             ; expect error: bad argument type: numberp: "a"
