(print (vl-sort '(3 2 1 3) '<))               ; expect: (1 2 3)
(print (vl-sort '(3.0 1.0 3.0) '<))           ; expect: (1.0 3.0 3.0)
(print (vl-sort '("b" "a" "b") '<))           ; expect: ("a" "b" "b")
(print (vl-sort '(c a b a) '(lambda (x y) (< (vl-symbol-name x) (vl-symbol-name y))))) ; expect: (A B C)
; Equal ones keep their order.
(print (vl-sort '((2 "x") (1 "b") (1 "a")) (function (lambda (x y) (< (car x) (car y))))))
; expect: ((1 "b") (1 "a") (2 "x"))
; A comparison that makes no sense comes to an end.
(print (length (vl-sort '("a" "b" "c" "d") '(lambda (x y) t)))) ; expect: 4
(print (vl-sort nil '<))                      ; expect: nil
(print (vl-sort-i '("b" "c" "a") '<))         ; expect: (2 0 1)
(print (vl-sort-i '(2 1 2) '<))               ; expect: (1 0 2)
(print (acad_strlsort '("c" "a" "B")))        ; expect: ("B" "a" "c")
(vl-sort 1 '<)                                ; expect error: bad argument type: listp 1
(vl-sort '(1 "a") '<)                         ; expect error: bad argument type for compare: "a" 1
(vl-sort-i '(2 1))                            ; expect error: too few arguments
(acad_strlsort '(1 2))                        ; expect error: bad argument type: stringp 1
