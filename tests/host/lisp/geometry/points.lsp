(print (distance '(1.0 2.5 3.0) '(7.7 2.5 3.0)))   ; expect: 6.7
(print (distance '(0 0) '(3 4 12)))                ; expect: 5.0
(print (distance '(0 0 0) '(3 4 12)))              ; expect: 13.0
(print (angle '(1.0 1.0) '(1.0 4.0)))              ; expect: 1.5708
(print (angle '(5.0 1.33) '(2.4 1.33)))            ; expect: 3.14159
(print (polar '(1 1 3.5) 0.0 2))                   ; expect: (3.0 1.0 3.5)
(print (polar '(0 0) 0 1))                         ; expect: (1.0 0.0)
(print (inters '(1.0 1.0) '(9.0 9.0) '(4.0 1.0) '(4.0 2.0)))      ; expect: nil
(print (inters '(1.0 1.0) '(9.0 9.0) '(4.0 1.0) '(4.0 2.0) nil))  ; expect: (4.0 4.0)
(print (inters '(0 0 0) '(4 4 0) '(0 4 0) '(4 0 0)))              ; expect: (2.0 2.0 0.0)
(print (cvunit 1 "minute" "second"))               ; expect: 60.0
(print (cvunit 1 "gallon" "furlong"))              ; expect: nil
(print (cvunit '(1.0 2.5) "ft" "in"))              ; expect: (12.0 30.0)
(print (cvunit 180 "degrees" "radians"))           ; expect: 3.14159
(print (cvunit 1 "meters" "mm"))                   ; expect: 1000.0
(distance '(1) '(2 3))                             ; expect error: bad argument type: 2D/3D point: (1)
(distance '(1 2))                                  ; expect error: too few arguments
(angle nil '(1 2))                                 ; expect error: bad argument type: 2D/3D point: nil
(polar '(1 2) "x" 2)                               ; expect error: bad argument type: numberp: "x"
(inters '(1 2) '(3 4) 5 6)                         ; expect error: bad argument type: 2D/3D point: 5
(cvunit "x" "ft" "in")                             ; expect error: bad argument type: numberp: "x"
(cvunit 1 "ft")                                    ; expect error: too few arguments
