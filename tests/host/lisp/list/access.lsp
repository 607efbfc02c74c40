(setq x '((a b) c d))
(print (car x))                ; expect: (A B)
(print (cdr x))                ; expect: (C D)
(print (cadr x))               ; expect: C
(print (caar x))               ; expect: A
(print (cdar x))               ; expect: (B)
(print (cddr x))               ; expect: (D)
(print (caddr x))              ; expect: D
(print (cadar x))              ; expect: B
(print (car nil))              ; expect: nil
(print (cdr '(1 . 2)))         ; expect: 2
(print (cadr '(1)))            ; expect: nil
(setq y '(1 2 3 4 5 6))
(print (cadddr y))             ; expect: 4
(print (cddddr y))             ; expect: (5 6)
(print (cdddr y))              ; expect: (4 5 6)
(setq z '(((1 2) (3 4)) ((5 6) (7 8)) (9 10) 11))
(print (list (caaar z) (caadr z) (cdaar z) (cdadr z) (cddar z) (cadadr z) (caaadr z) (caaddr z)))
; expect: (1 (5 6) (2) ((7 8)) nil (7 8) 5 9)
(print (list (caaaar '((((1))))) (caadar z) (cadaar z) (caddar '((1 2 3))) (cdaaar '((((1 2)))))))
; expect: (1 3 2 3 (2))
(print (list (cdaadr z) (cdadar z) (cdaddr z) (cddaar '(((1 2 3)))) (cddadr '(1 (2 3 4))) (cdddar '((1 2 3 4)))))
; expect: ((6) (4) (10) (3) (4) (4))
(car 5)                        ; expect error: bad argument type: consp 5
(cdr "a")                      ; expect error: bad argument type: consp "a"
(cadr '(1 . 2))                ; expect error: bad argument type: consp 2
(car)                          ; expect error: too few arguments
(cdr '(1) 2)                   ; expect error: too many arguments
