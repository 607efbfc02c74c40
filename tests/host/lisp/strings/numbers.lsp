(print (atof "97.1"))             ; expect: 97.1
(print (atof " -3.5abc"))         ; expect: -3.5
(print (atof "1e3"))              ; expect: 1000.0
(print (atof "+2"))               ; expect: 2.0
(print (atof "abc"))              ; expect: 0.0
(print (atof "inf"))              ; expect: 0.0
(print (atof ".5"))               ; expect: 0.5
(print (atoi "17"))               ; expect: 17
(print (atoi "17.9"))             ; expect: 17
(print (atoi "-8x"))              ; expect: -8
(print (atoi ""))                 ; expect: 0
(print (itoa -33))                ; expect: "-33"
(print (rtos 17.5 2 2))           ; expect: "17.50"
(print (rtos 17.5 1 4))           ; expect: "1.7500E+01"
(print (angtos 0.785398163397448 0 2)) ; expect: "45.00"
(print (angtos 0.785398163397448 3 4)) ; expect: "0.7854r"
(print (distof "17.5" 2))         ; expect: 17.5
(print (distof "x" 2))            ; expect: nil
(print (angtof "45.0000" 0))      ; expect: 0.785398
(print (angtof "x" 0))            ; expect: nil
(atof 5)                          ; expect error: bad argument type: stringp 5
(atoi nil)                        ; expect error: bad argument type: stringp nil
(itoa 1.5)                        ; expect error: bad argument type: fixnump: 1.5
(rtos "5")                        ; expect error: bad argument type: numberp: "5"
(rtos 5 2 2 2)                    ; expect error: too many arguments
(angtos nil)                      ; expect error: bad argument type: numberp: nil
(distof 5)                        ; expect error: bad argument type: stringp 5
(angtof 5)                        ; expect error: bad argument type: stringp 5
