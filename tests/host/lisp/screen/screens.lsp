(print (list (graphscr) (textscr) (textpage) (redraw))) ; expect: (nil nil nil nil)
(setq e (entmakex '((0 . "POINT") (10 1.0 2.0 0.0))))
(print (redraw e 3))                           ; expect: nil
(print (grdraw '(0 0) '(1.0 1.0) 1))           ; expect: (0 0)
(print (grvecs '(1 (0 0) (1 1) -2 (1 1) (2 2)))) ; expect: nil
(print (grvecs '((0 0) (1 1)) '((1.0 0.0 0.0 5.0) (0.0 1.0 0.0 5.0) (0.0 0.0 1.0 0.0) (0.0 0.0 0.0 1.0)))) ; expect: nil
(print (grtext))                               ; expect: nil
(graphscr 1)                                   ; expect error: too many arguments
(textscr 1)                                    ; expect error: too many arguments
(textpage 1)                                   ; expect error: too many arguments
(redraw 5)                                     ; expect error: bad argument type: lentityp 5
(redraw e "3")                                 ; expect error: bad argument type: fixnump: "3"
(grdraw '(0 0) '(1 1))                         ; expect error: too few arguments
(grdraw '(0 0) 5 1)                            ; expect error: bad argument type: 2D/3D point: 5
(grvecs '("x"))                                ; expect error: bad argument value: vector list "x"
(grvecs '((0 0) (1 1)) '(1 2))                 ; expect error: bad argument value: matrix (1 2)
(grtext 1 2 3 4)                               ; expect error: too many arguments
(help 5)                                       ; expect error: bad argument type: stringp 5
