;| a block
   comment |; (print 1) ;| and (print 2) |; (print 3)
; expect: 1
; expect: 3
(print '(a ;inside
         b)) ; expect: (A B)
(print 'a)(print'b)
; expect: A
; expect: B
;; bytes above 127 in a comment: äöü
(print '(x'y "z"w))  ; expect: (X (QUOTE Y) "z" W)
(setq über 5)
(print über) ; expect: 5
