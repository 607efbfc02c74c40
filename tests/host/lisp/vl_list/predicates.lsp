(print (vl-remove 2 '(1 2 3 2)))              ; expect: (1 3)
(print (vl-remove-if 'listp '(1 (2) "c" (3)))) ; expect: (1 "c")
(print (vl-remove-if-not '(lambda (x) (> x 1)) '(1 2 3))) ; expect: (2 3)
(print (vl-member-if 'numberp '("a" 1 "b")))  ; expect: (1 "b")
(print (vl-member-if-not 'numberp '(1 "a" 2))) ; expect: ("a" 2)
(print (vl-position "b" '("a" "b")))          ; expect: 1
(print (vl-position 9 '(1)))                  ; expect: nil
(print (vl-some 'numberp '("a" 1)))           ; expect: T
(print (vl-some '(lambda (x y) (if (= x y) x)) '(1 5) '(2 5))) ; expect: 5
(print (vl-some 'numberp nil))                ; expect: nil
(print (vl-every '< '(1 2) '(2 3)))           ; expect: T
(print (vl-every 'numberp '(1 "a")))          ; expect: nil
(print (vl-every 'numberp nil))               ; expect: T
(print (vl-list* 1 2 '(3)))                   ; expect: (1 2 3)
(print (vl-list* 1 2))                        ; expect: (1 . 2)
(print (vl-list-length '(1 2)))               ; expect: 2
(print (vl-list-length '(1 . 2)))             ; expect: nil
(vl-remove 1 2)                               ; expect error: bad argument type: listp 2
(vl-remove-if 'nosuch '(1))                   ; expect error: no function definition: NOSUCH
(vl-remove-if-not 'numberp "a")               ; expect error: bad argument type: listp "a"
(vl-member-if 'numberp)                       ; expect error: too few arguments
(vl-member-if-not 'numberp 7)                 ; expect error: bad argument type: listp 7
(vl-position 1 "1")                           ; expect error: bad argument type: listp "1"
(vl-some 'numberp 1)                          ; expect error: bad argument type: listp 1
(vl-every 'numberp 1)                         ; expect error: bad argument type: listp 1
(vl-list-length 5)                            ; expect error: bad argument type: listp 5
