(print (read "hello"))              ; expect: HELLO
(print (read "(a b) c"))            ; expect: (A B)
(print (read "12"))                 ; expect: 12
(print (read "1.5e3"))              ; expect: 1500.0
(print (read ""))                   ; expect: nil
(print (read "\"x\""))              ; expect: "x"
(print (read "; comment\n 'q"))     ; expect: (QUOTE Q)
(read "(a")                         ; expect error: malformed list on input
(read "\"a")                        ; expect error: malformed string on input
(read ")")                          ; expect error: extra right paren on input
(read 5)                            ; expect error: bad argument type: stringp 5
(read)                              ; expect error: too few arguments
