; Polylines of all three kinds, with each way to have a colour.
(defun layer (name color)
  (entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
                 (cons 2 name) '(70 . 0) (cons 62 color) '(6 . "Continuous"))))
; Vertices are (x y) or (x y bulge).
(defun lw (groups flags elevation vertices / list-of)
  (setq list-of (append '((0 . "LWPOLYLINE") (100 . "AcDbEntity")) groups '((100 . "AcDbPolyline"))
                        (list (cons 90 (length vertices)) (cons 70 flags) (cons 38 elevation))))
  (foreach v vertices
    (setq list-of (append list-of (list (list 10 (car v) (cadr v)) (cons 42 (if (caddr v) (caddr v) 0.0))))))
  (entmake list-of))
; Vertices are (x y z) or (x y z bulge).
(defun old-style (groups flags elevation vertex-flags vertices)
  (entmake (append '((0 . "POLYLINE")) groups
                   (list '(66 . 1) (cons 70 flags) (list 10 0.0 0.0 elevation))))
  (foreach v vertices
    (entmake (list '(0 . "VERTEX") (list 10 (car v) (cadr v) (caddr v)) (cons 42 (if (cadddr v) (cadddr v) 0.0))
                   (cons 70 vertex-flags))))
  (entmake '((0 . "SEQEND"))))

(layer "Road" 3)
(layer "FENCE" 30)
(layer "HIDDEN" -1)

; Open and closed, colour of the object.
(lw '((8 . "Road") (62 . 1)) 0 5.0 '((0 0) (10 0) (10.126 20.5)))
(lw '((8 . "Road") (62 . 2)) 1 0.0 '((0 0) (50 0) (50 50)))
; Colour of the layer: a standard one, another one, one of a layer that is off, by block.
(old-style '((8 . "Road")) 0 7.25 0 '((1.0 2.0 0.0) (3.0 4.0 0.0)))
(old-style '((8 . "FENCE")) 9 0.0 32 '((1.0 2.0 3.0) (4.0 5.0 6.0) (7.0 -8.0 9.0)))
(lw '((8 . "HIDDEN")) 0 0.0 '((0 0) (1 1)))
(old-style '((8 . "ROAD") (62 . 0)) 8 0.0 32 '((640000.004 5120000.006 101.25) (640012.0 5120004.0 102.75)))
; Arcs: a half circle between straight parts whose middle vertices are in line, and a closed polyline
; with an arc either way round.
(lw '((8 . "0")) 0 1.0 '((-300 0) (-200 0) (-100 0 1.0) (100 0) (200 0) (300 0)))
(old-style '((8 . "0") (62 . 7)) 1 2.0 0 '((0.0 0.0 0.0 0.4142135623730951) (100.0 0.0 0.0 -0.4142135623730951) (100.0 100.0 0.0)))
; An arc of no length goes with its end.
(lw '((8 . "0") (62 . 5)) 0 0.0 '((0 0 1.0) (0.0000001 0) (10 0)))
; Neither of these is a polyline to be written.
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 9.0 9.0 9.0)))
(old-style '((8 . "0")) 4 0.0 16 '((1.0 2.0 0.0)))
(princ)
