(print '())                          ; expect: nil
(print '(a . (b . (c . nil))))       ; expect: (A B C)
(print '(a . b))                     ; expect: (A . B)
(print ''a)                          ; expect: (QUOTE A)
(print '(1 . -2))                    ; expect: (1 . -2)
(print 'NIL)                         ; expect: nil
(print '(( . a)))                    ; expect error: misplaced dot on input
(print '(a . ))                      ; expect error: misplaced dot on input
(print '(a . b c))                   ; expect error: extra cdrs in dotted pair on input
(print 5))                           ; expect: 5
; expect error: extra right paren on input
(print 6)                            ; expect: 6
(print '(a b)                        ; expect error: malformed list on input
(print "open                         ; expect error: malformed string on input
