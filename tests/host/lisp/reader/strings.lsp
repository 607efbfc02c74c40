(princ "a\\b \"q\" tab[\t] \101\060 \x") (terpri) ; expect: a\b "q" tab[	] A0 x
(print (strlen "\e\n\r\t"))                    ; expect: 4
(print (ascii "\e"))                           ; expect: 27
(print (ascii "\377"))                         ; expect: 255
(print (strlen "\1012"))                       ; expect: 2
(terpri) (princ "\U+00E4\u+00e4") (terpri)              ; expect: äu+00e4
(print "\U+4E2D")                              ; expect: "\\U+4E2D"
(print "\M+1B0A1")                             ; expect: "\\M+1B0A1"
(print (strlen "\U+zz"))                       ; expect: 4
(print "two
lines")                                        ; expect: "two\nlines"
(print (strlen "ä"))                           ; expect: 2
