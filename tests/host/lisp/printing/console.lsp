(princ "a") (princ 1.0) (princ '("b" c)) (terpri) ; expect: a1.0(b C)
(prin1 "a\tb") (terpri)                  ; expect: "a\tb"
(print 'x) (print "y")
; expect: X
; expect: "y"
(terpri) (print (princ "p"))
; expect: p
; expect: "p"
(princ "\nq") (princ)                    ; expect: q
(prompt "\nhello\n")                     ; expect: hello
(write-line "line")                      ; expect: line
(write-char 65) (terpri)                 ; expect: A
(print (list 1e10 1.5e-7 100000.0 1000000.0 123456.7 -0.5 1e100))
; expect: (1.0e+10 1.5e-07 100000.0 1.0e+06 123457.0 -0.5 1.0e+100)
(print (prompt ""))                      ; expect: nil
(alert "careful")                        ; expect: [alert] careful
(princ 1 2)                              ; expect error: bad argument type: streamp 2
(prin1 1 2 3)                            ; expect error: too many arguments
(print 1 "x")                            ; expect error: bad argument type: streamp "x"
(terpri 1)                               ; expect error: too many arguments
(prompt 5)                               ; expect error: bad argument type: stringp 5
(write-line 5)                           ; expect error: bad argument type: stringp 5
(write-char "a")                         ; expect error: bad argument type: fixnump: "a"
(write-char 0)                           ; expect error: bad argument value: character code 0
(alert nil)                              ; expect error: bad argument type: stringp nil
