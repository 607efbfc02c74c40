(setq f1 '(a b c) f2 '(a b c) f3 f2)
(print (eq f1 f3))             ; expect: nil
(print (eq f3 f2))             ; expect: T
(print (eq "x" "x"))           ; expect: T
(print (eq 1 1))               ; expect: T
(print (eq 1 1.0))             ; expect: nil
(print (equal f1 f2))          ; expect: T
(print (equal 1 1.0))          ; expect: T
(print (equal 1.123456 1.123457))           ; expect: nil
(print (equal 1.123456 1.123457 0.000002))  ; expect: T
(print (equal '(1 (2.0 "a")) '(1 (2.05 "a")) 0.1)) ; expect: T
(print (equal '(1 . 2) '(1 2)))             ; expect: nil
(print (equal '(1 . 2) '(1 . 2)))           ; expect: T
(print (not nil))              ; expect: T
(print (not 0))                ; expect: nil
(print (null '()))             ; expect: T
(print (atom 'a))              ; expect: T
(print (atom nil))             ; expect: T
(print (atom '(a)))            ; expect: nil
(print (listp nil))            ; expect: T
(print (listp "x"))            ; expect: nil
(print (vl-consp nil))         ; expect: nil
(print (vl-consp '(1)))        ; expect: T
(print (numberp 1.5))          ; expect: T
(print (numberp "1"))          ; expect: nil
(print (vl-symbolp 'a))        ; expect: T
(print (vl-symbolp 1))         ; expect: nil
(setq bound 2 empty nil)
(print (boundp 'bound))        ; expect: T
(print (boundp 'empty))        ; expect: nil
(print (boundp 'never-seen))   ; expect: nil
(eq 1)                         ; expect error: too few arguments
(equal 1 2 "x")                ; expect error: bad argument type: numberp: "x"
(not)                          ; expect error: too few arguments
(null 1 2)                     ; expect error: too many arguments
(minusp "1")                   ; expect error: bad argument type: numberp: "1"
(zerop nil)                    ; expect error: bad argument type: numberp: nil
