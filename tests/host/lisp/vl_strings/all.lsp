(print (vl-string-search "foo" "pfooyey foo"))     ; expect: 1
(print (vl-string-search "foo" "pfooyey foo" 2))   ; expect: 8
(print (vl-string-search "x" "abc"))               ; expect: nil
(print (vl-string-search "c" "abc" 9))             ; expect: nil
(print (vl-string-subst "obj" "A" "AaA"))          ; expect: "objaA"
(print (vl-string-subst "x" "A" "AaA" 1))          ; expect: "Aax"
(print (vl-string-subst "x" "q" "abc"))            ; expect: "abc"
(print (vl-string-translate "abcA" "123" "A-a-b-c")) ; expect: "3-1-2-3"
(print (vl-string-translate "," "." "1,5"))        ; expect: "1.5"
(print (vl-string-trim " \t" " \t a b \t"))        ; expect: "a b"
(print (vl-string-trim "-" "---"))                 ; expect: ""
(print (vl-string-left-trim "12" "1a12"))          ; expect: "a12"
(print (vl-string-right-trim "12" "1a12"))         ; expect: "1a"
(print (vl-string-position (ascii "z") "azdlmnqc")) ; expect: 1
(print (vl-string-position 46 "a.b.c" nil t))      ; expect: 3
(print (vl-string-position 46 "a.b.c" 2))          ; expect: 3
(print (vl-string-position 300 "abc"))             ; expect: nil
(print (vl-string-elt "May" 2))                    ; expect: 121
(print (vl-string-mismatch "VL-FUN" "VL-VAR"))     ; expect: 3
(print (vl-string-mismatch "abc" "xABC" 0 1 t))    ; expect: 3
(print (vl-string->list "AB"))                     ; expect: (65 66)
(print (vl-string->list ""))                       ; expect: nil
(print (vl-list->string '(65 66)))                 ; expect: "AB"
(print (vl-prin1-to-string "a\"b"))                ; expect: "\"a\\\"b\""
(print (vl-princ-to-string '("a" 1.5)))            ; expect: "(a 1.5)"
(vl-string-search 1 "a")                           ; expect error: bad argument type: stringp 1
(vl-string-search "a" "b" -1)                      ; expect error: bad argument value: non-negative -1
(vl-string-subst "a" "b")                          ; expect error: too few arguments
(vl-string-translate "a" "b" 3)                    ; expect error: bad argument type: stringp 3
(vl-string-trim "a")                               ; expect error: too few arguments
(vl-string-left-trim 1 "a")                        ; expect error: bad argument type: stringp 1
(vl-string-right-trim "a" 1)                       ; expect error: bad argument type: stringp 1
(vl-string-position "a" "abc")                     ; expect error: bad argument type: fixnump: "a"
(vl-string-elt "abc" 3)                            ; expect error: bad argument value: string position 3
(vl-string-mismatch "a")                           ; expect error: too few arguments
(vl-string->list 5)                                ; expect error: bad argument type: stringp 5
(vl-list->string '("a"))                           ; expect error: bad argument type: fixnump: "a"
(vl-list->string '(0))                             ; expect error: bad argument value: character code 0
(vl-prin1-to-string)                               ; expect error: too few arguments
(vl-princ-to-string 1 2)                           ; expect error: too many arguments
