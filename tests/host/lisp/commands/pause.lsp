; answer: 3,4
; answer: ^C
(setvar "CMDECHO" 0)
(command "_.LINE" '(0 0) pause "")
; expect: 3,4
(print (assoc 11 (entget (entlast))))          ; expect: (11 3.0 4.0 0.0)
