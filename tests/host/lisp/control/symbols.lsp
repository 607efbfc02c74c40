(print (vl-symbol-name 'abc))          ; expect: "ABC"
(setq abc 5)
(print (vl-symbol-value 'abc))         ; expect: 5
(print (atoms-family 0 '("CAR" "NOSUCH" "abc"))) ; expect: (CAR nil ABC)
(print (atoms-family 1 '("CAR")))      ; expect: ("CAR")
(print (> (length (atoms-family 0)) 200)) ; expect: T
(print (vl-bb-set 'shared '(1 "a" (2.5 . b)))) ; expect: (1 "a" (2.5 . B))
(print (vl-bb-ref 'shared))            ; expect: (1 "a" (2.5 . "B"))
(print (vl-bb-ref 'nothing-there))     ; expect: nil
(print (vl-load-com))                  ; expect: nil
(print (gc))                           ; expect: nil
(print (type (ver)))                   ; expect: STR
(print pi)                             ; expect: 3.14159
(print pause)                          ; expect: "\\"
(print t)                              ; expect: T
(vl-symbol-name "abc")                 ; expect error: bad argument type: symbolp "abc"
(vl-symbol-value 1)                    ; expect error: bad argument type: symbolp 1
(atoms-family "0")                     ; expect error: bad argument type: fixnump: "0"
(vl-bb-ref)                            ; expect error: too few arguments
(vl-bb-set 'a)                         ; expect error: too few arguments
(vl-load-com 1)                        ; expect error: too many arguments
(gc 1)                                 ; expect error: too many arguments
(ver 1)                                ; expect error: too many arguments
