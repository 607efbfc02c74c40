(setq made (entmake '((0 . "LINE") (8 . "WALL") (62 . 3) (10 1.0 2.0 0.0) (11 5.0 2 0))))
(print (cdr (assoc 8 made)))                   ; expect: "WALL"
(setq e (entlast) g (entget e))
(print (cdr (assoc 0 g)))                      ; expect: "LINE"
(print (eq e (cdr (assoc -1 g))))              ; expect: T
(print (assoc 10 g))                           ; expect: (10 1.0 2.0 0.0)
(print (assoc 62 g))                           ; expect: (62 . 3)
(setq g (subst '(8 . "DOOR") (assoc 8 g) g))
(print (listp (entmod g)))                     ; expect: T
(print (assoc 8 (entget e)))                   ; expect: (8 . "DOOR")
(print (eq (entupd e) e))                      ; expect: T
(print (eq (handent (cdr (assoc 5 g))) e))     ; expect: T
(print (handent "FFFFFF"))                     ; expect: nil
(setq c (entmakex '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 2))))
(print (type c))                               ; expect: ENAME
(print (eq (entnext) e))                       ; expect: T
(print (eq (entnext e) c))                     ; expect: T
(print (entnext c))                            ; expect: nil
(print (eq (entdel c) c))                      ; expect: T
(print (entget c))                             ; expect: nil
(entdel c)
(print (eq (entlast) c))                       ; expect: T
(print (entmake '((0 . "LINE") (8 . "0"))))    ; expect: nil
; Points of a lightweight polyline have two coordinates.
(setq p (entmakex '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 2) (70 . 0) (10 1.0 2.0) (10 3.0 4.0))))
(print (assoc 10 (entget p)))                  ; expect: (10 1.0 2.0)
(print (entmake '((0 . "BLOCK") (2 . "POST") (70 . 0) (10 0.0 0.0 0.0)))) ; expect: ((0 . "BLOCK") (2 . "POST") (70 . 0) (10 0.0 0.0 0.0))
(print (entmake '((0 . "POINT") (10 0.0 0.0 0.0)))) ; expect: ((0 . "POINT") (10 0.0 0.0 0.0))
(print (entmake '((0 . "endblk"))))            ; expect: "POST"
(repeat 2 (entmake '((0 . "BLOCK") (2 . "*U") (70 . 1) (10 0.0 0.0 0.0))) (setq nameless (entmake '((0 . "ENDBLK")))))
(print nameless)                               ; expect: "*U2"
(print (entmake '((0 . "ENDBLK"))))            ; expect: nil
(print (entmake))                              ; expect: nil
(print (entmakex))                             ; expect: nil
(entget 5)                                     ; expect error: bad argument type: lentityp 5
(entget nil)                                   ; expect error: bad argument type: lentityp nil
(entmake '((0 . "LINE") (10 . 5)))             ; expect error: bad DXF group: (10 . 5)
(entmake '((0 . "LINE") "x"))                  ; expect error: bad DXF group: "x"
(entmake '((0 . "LINE") (62 . "red")))         ; expect error: bad DXF group: (62 . "red")
(entmakex 5)                                   ; expect error: bad argument type: listp 5
(entmod)                                       ; expect error: too few arguments
(entdel "x")                                   ; expect error: bad argument type: lentityp "x"
(entupd)                                       ; expect error: too few arguments
(entnext 5)                                    ; expect error: bad argument type: lentityp 5
(entlast 1)                                    ; expect error: too many arguments
(handent 5)                                    ; expect error: bad argument type: stringp 5
