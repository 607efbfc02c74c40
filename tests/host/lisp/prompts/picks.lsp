; answer: 5,0
; answer: 50,50
; answer: 5,0
; answer: 5,0
; answer: 7,8
; answer: q
; answer:
(setq e (entmakex '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0))))
(setq s (entsel "Pick: "))
; expect: Pick: 5,0
(print (eq (car s) e))                         ; expect: T
(print (cadr s))                               ; expect: (5.0 0.0 0.0)
(print (entsel "\nMiss: "))
; expect: Miss: 50,50
; expect: nil
(setq s (nentsel "\nNested: "))
; expect: Nested: 5,0
(print (list (eq (car s) e) (length s)))       ; expect: (T 2)
(setq s (nentselp "\nNested: "))
; expect: Nested: 5,0
(print (eq (car s) e))                         ; expect: T
(print (eq (car (nentselp '(5.0 0.0 0.0))) e)) ; expect: T
(print (osnap '(5.1 0.0 0.0) "_mid"))          ; expect: (5.0 0.0 0.0)
(terpri) (print (grread))
; expect: 7,8
; expect: (3 (7.0 8.0 0.0))
(terpri) (print (grread t))
; expect: q
; expect: (2 113)
(print (grread))                               ; expect: (2 13)
(entsel 5)                                     ; expect error: bad argument type: stringp 5
(nentsel 5)                                    ; expect error: bad argument type: stringp 5
(nentselp 'a)                                  ; expect error: bad argument type: 2D/3D point: A
(osnap 5 "mid")                                ; expect error: bad argument type: 2D/3D point: 5
(osnap '(1 2))                                 ; expect error: too few arguments
(grread 1 2 3 4)                               ; expect error: too many arguments
