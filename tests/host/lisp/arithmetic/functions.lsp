(print (sqrt 4))          ; expect: 2.0
(print (sqrt 2.0))        ; expect: 1.41421
(print (expt 2 10))       ; expect: 1024
(print (expt 2.0 0.5))    ; expect: 1.41421
(print (expt 2 -1))       ; expect: 0
(print (expt 4 0.5))      ; expect: 2.0
(print (exp 0))           ; expect: 1.0
(print (log 1))           ; expect: 0.0
(print (sin (/ pi 2)))    ; expect: 1.0
(print (cos 0))           ; expect: 1.0
(print (atan 1))          ; expect: 0.785398
(print (atan -1 -1))      ; expect: -2.35619
(print (fix 3.99))        ; expect: 3
(print (fix -3.99))       ; expect: -3
(print (fix 5))           ; expect: 5
(print (float 5))         ; expect: 5.0
(print (max 1 5 3))       ; expect: 5
(print (max 2.1 4 8))     ; expect: 8.0
(print (min 683 -10 4.0)) ; expect: -10.0
(print (min))             ; expect: 0
(print (gcd 81 57))       ; expect: 3
(print (minusp -1))       ; expect: T
(print (minusp 0))        ; expect: nil
(print (zerop 0.0))       ; expect: T
(sqrt -1)                 ; expect error: function undefined for argument: -1
(log 0)                   ; expect error: function undefined for argument: 0
(expt -8 0.5)             ; expect error: function undefined for argument: -8
(sin "x")                 ; expect error: bad argument type: numberp: "x"
(cos)                     ; expect error: too few arguments
(atan 1 2 3)              ; expect error: too many arguments
(max 1 "2")               ; expect error: bad argument type: numberp: "2"
(fix nil)                 ; expect error: bad argument type: numberp: nil
(gcd 1 -2)                ; expect error: bad argument value: positive -2
