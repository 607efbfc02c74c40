; Points between coordinate systems: 0 world, 1 user, 2 display, an entity or a normal.
(print (trans '(1.0 2.0 3.0) 0 1))                 ; expect: (1.0 2.0 3.0)
(print (trans '(1 2) 1 0))                         ; expect: (1.0 2.0 0.0)
; A normal along x turns the axes: its x axis is the world's y.
(print (trans '(1.0 2.0 3.0) 0 '(1.0 0.0 0.0)))    ; expect: (2.0 3.0 1.0)
(print (trans '(2.0 3.0 1.0) '(1.0 0.0 0.0) 0))    ; expect: (1.0 2.0 3.0)
(print (trans '(1.0 2.0 3.0) 0 '(0 0 -1)))         ; expect: (-1.0 2.0 -3.0)
(setq e (entmakex '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0) (210 0.0 0.0 -1.0))))
(print (trans '(1.0 2.0 3.0) e 0))                 ; expect: (-1.0 2.0 -3.0)
(setq l (entmakex '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0) (210 0.0 0.0 -1.0))))
(print (trans '(1.0 2.0 3.0) l 0))                 ; expect: (1.0 2.0 3.0)
(trans '(1 2 3) 0 7)                               ; expect error: bad argument value: coordinate system 7
(trans '(1 2 3) 0 "x")                             ; expect error: bad argument type: fixnump: "x"
(trans '(1 2 3) 0)                                 ; expect error: too few arguments
(trans 5 0 1)                                      ; expect error: bad argument type: 2D/3D point: 5
