; The four operations, whole and real.
(print (+))               ; expect: 0
(print (+ 1 2))           ; expect: 3
(print (+ 1 2.5))         ; expect: 3.5
(print (- 5))             ; expect: -5
(print (- 10 3 2))        ; expect: 5
(print (-))               ; expect: 0
(print (* 3 4 2))         ; expect: 24
(print (*))               ; expect: 0
(print (/ 7 2))           ; expect: 3
(print (/ -7 2))          ; expect: -3
(print (/ 7 2.0))         ; expect: 3.5
(print (/ 20 4 2.0))      ; expect: 2.5
(print (/ 5))             ; expect: 5
(print (1+ 5))            ; expect: 6
(print (1- 5.5))          ; expect: 4.5
(print (rem 17 5))        ; expect: 2
(print (rem -17 5))       ; expect: -2
(print (rem 12.5 5))      ; expect: 2.5
(print (abs -4))          ; expect: 4
(print (abs -4.5))        ; expect: 4.5
(+ 1 nil)                 ; expect error: bad argument type: numberp: nil
(- "1" 2)                 ; expect error: bad argument type: numberp: "1"
(* 2 'a)                  ; expect error: bad argument type: numberp: A
(/ 1 0)                   ; expect error: divide by zero
(/ 1.0 0.0)               ; expect error: divide by zero
(rem 1 0)                 ; expect error: divide by zero
(1+)                      ; expect error: too few arguments
(1- 1 2)                  ; expect error: too many arguments
(abs)                     ; expect error: too few arguments
