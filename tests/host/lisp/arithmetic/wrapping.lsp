; Integers have 32 bits and wrap; what is written larger is a real.
(print (+ 2147483647 1))          ; expect: -2147483648
(print (1+ 2147483647))           ; expect: -2147483648
(print (1- -2147483648))          ; expect: 2147483647
(print (- -2147483648))           ; expect: -2147483648
(print (* 65536 65536))           ; expect: 0
(print (* 46341 46341))           ; expect: -2147479015
(print (/ -2147483648 -1))        ; expect: -2147483648
(print (abs -2147483648))         ; expect: -2147483648
(print 2147483648)                ; expect: 2.14748e+09
(print (type 2147483647))         ; expect: INT
(print (type 2147483648))         ; expect: REAL
(print (type -2147483648))        ; expect: INT
(print (expt 2 31))               ; expect: -2147483648
(print (expt 2 32))               ; expect: 0
(print (fix 3e10))                ; expect: 3.0e+10
(print (fix 2147483647.9))        ; expect: 2147483647
