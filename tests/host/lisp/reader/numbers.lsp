(print '(1 -1 +1 1.5 -1.5 +1.5 1e3 1.5E-3 1. .5 -.5)) ; expect: (1 -1 1 1.5 -1.5 1.5 1000.0 0.0015 1.0 0.5 -0.5)
(print (mapcar 'type '(1 1. 1e1 1+ 1- - + 1a e1)))    ; expect: (INT REAL REAL SYM SYM SYM SYM SYM SYM)
(print '(a.b 1.2.3 12-34))                            ; expect: (A.B 1.2.3 12-34)
(print 1e400)                                         ; expect: 1.79769e+308
(print 1e-400)                                        ; expect: 0.0
