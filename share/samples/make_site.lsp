;; make_site.lsp: draws the sample survey site with entmake, so that it depends on no command.
;;   zentrik run --no-module -o share/samples/site.dxf share/samples/make_site.lsp
;;
;; A road with a bend and a turning circle, two rows of lots with rounded corners, contours, a
;; ditch with breaklines, a grid of survey points, symbols, core holes and channels. Units are
;; metres. The ground is z = 100 + 0.05 (y - 10000) + 1.5 sin((x - 5000) / 40), so a contour
;; of level c is y = 10000 + (c - 100 - 1.5 sin(...)) / 0.05 in closed form.

(setq ox 5000.0 oy 10000.0)

(defun ground (x y)
  (+ 100.0 (* 0.05 (- y oy)) (* 1.5 (sin (/ (- x ox) 40.0)))))

(defun at (dx dy) (list (+ ox dx) (+ oy dy) 0.0))
(defun at-ground (dx dy / x y)
  (setq x (+ ox dx) y (+ oy dy))
  (list x y (ground x y)))

;; ---- tables ---------------------------------------------------------------------------------
(defun make-layer (name color)
  (entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
                 (cons 2 name) '(70 . 0) (cons 62 color) '(6 . "Continuous"))))

(foreach one '(("BOUNDARY" 2) ("LOTS" 3) ("CONTOUR" 8) ("CONTOUR-INDEX" 30) ("BREAKLINE" 1)
               ("ROAD" 7) ("FENCE" 6) ("POINTS" 4) ("SYMBOLS" 5) ("TEXT" 7) ("HOLES" 11) ("DITCH" 140))
  (make-layer (car one) (cadr one)))

(regapp "COREHOLE")
(regapp "CHANNEL")

;; ---- block definitions --------------------------------------------------------------------------
(defun attdef (tag prompt point height)
  (entmake (list '(0 . "ATTDEF") '(8 . "0") (cons 10 point) (cons 40 height) '(1 . "") (cons 3 prompt)
                 (cons 2 tag) '(70 . 0))))
(defun line (layer a b) (entmake (list '(0 . "LINE") (cons 8 layer) (cons 10 a) (cons 11 b))))
(defun circle (layer center radius)
  (entmake (list '(0 . "CIRCLE") (cons 8 layer) (cons 10 center) (cons 40 radius))))
(defun start-block (name flags) (entmake (list '(0 . "BLOCK") (cons 2 name) (cons 70 flags) '(10 0.0 0.0 0.0))))
(defun end-block () (entmake '((0 . "ENDBLK"))))

(start-block "SRVPNO1" 2)
(entmake '((0 . "POINT") (8 . "0") (10 0.0 0.0 0.0)))
(attdef "PT#" "Point number" '(0.4 0.6 0.0) 0.8)
(attdef "ELEV2" "Elevation" '(0.4 -0.4 0.0) 0.8)
(attdef "DESC2" "Description" '(0.4 -1.4 0.0) 0.8)
(end-block)

(start-block "SPTTREE" 0)
(circle "0" '(0.0 0.0 0.0) 1.0)
(line "0" '(-0.6 0.0 0.0) '(0.6 0.0 0.0))
(line "0" '(0.0 -0.6 0.0) '(0.0 0.6 0.0))
(end-block)

(start-block "SPTMANH" 0)
(circle "0" '(0.0 0.0 0.0) 0.5)
(end-block)

(start-block "HOLE" 0)
(circle "0" '(0.0 0.0 0.0) 0.8)
(line "0" '(-0.8 -0.8 0.0) '(0.8 0.8 0.0))
(end-block)

(start-block "WEIR" 0)
(line "0" '(-1.0 0.0 0.0) '(1.0 0.0 0.0))
(end-block)

;; ---- makers --------------------------------------------------------------------------------------
;; Lightweight polyline of (dx dy bulge) vertices.
(defun lw (layer closed elevation vertices / groups)
  (setq groups (list '(0 . "LWPOLYLINE") '(100 . "AcDbEntity") (cons 8 layer) '(100 . "AcDbPolyline")
                     (cons 90 (length vertices)) (cons 70 (if closed 1 0)) (cons 38 elevation)))
  (foreach v vertices
    (setq groups (append groups (list (cons 10 (list (+ ox (car v)) (+ oy (cadr v)))) (cons 42 (caddr v))))))
  (entmake groups))

;; Old-style polyline: vertices as lists of a point and a bulge.
(defun old-polyline (layer flags vertex-flags vertices)
  (entmake (list '(0 . "POLYLINE") (cons 8 layer) '(66 . 1) (cons 70 flags) '(10 0.0 0.0 0.0)))
  (foreach v vertices
    (entmake (list '(0 . "VERTEX") (cons 8 layer) (cons 10 (car v)) (cons 42 (cadr v)) (cons 70 vertex-flags))))
  (entmake (list '(0 . "SEQEND") (cons 8 layer))))
(defun poly3d (layer points) (old-polyline layer 8 32 (mapcar '(lambda (p) (list p 0.0)) points)))

(defun label (layer point height text)
  (entmake (list '(0 . "TEXT") (cons 8 layer) (cons 10 point) (cons 40 height) (cons 1 text))))
(defun symbol (name layer point turn)
  (entmake (list '(0 . "INSERT") (cons 8 layer) (cons 2 name) (cons 10 point) (cons 50 turn))))

(defun attrib (tag value point height)
  (entmake (list '(0 . "ATTRIB") '(8 . "POINTS") (cons 10 point) (cons 40 height) (cons 1 value) (cons 2 tag)
                 '(70 . 0))))
(defun survey-point (number point description)
  (entmake (list '(0 . "INSERT") '(8 . "POINTS") '(66 . 1) '(2 . "SRVPNO1") (cons 10 point)))
  (attrib "PT#" (itoa number) (mapcar '+ point '(0.4 0.6 0.0)) 0.8)
  (attrib "ELEV2" (rtos (caddr point) 2 2) (mapcar '+ point '(0.4 -0.4 0.0)) 0.8)
  (attrib "DESC2" description (mapcar '+ point '(0.4 -1.4 0.0)) 0.8)
  (entmake '((0 . "SEQEND") (8 . "POINTS"))))

;; ---- the site -----------------------------------------------------------------------------------------
(setq quarter 0.414213562373095)   ; bulge of a quarter circle

;; Boundary and road. The road bends to the north; its edges are parallel.
(lw "BOUNDARY" T 0.0 '((0.0 0.0 0.0) (240.0 0.0 0.0) (240.0 160.0 0.0) (0.0 160.0 0.0)))
(lw "ROAD" nil 0.0 (list '(0.0 80.0 0.0) (list 180.0 80.0 quarter) '(210.0 110.0 0.0) '(210.0 160.0 0.0)))
(foreach off '(4.0 -4.0)
  (old-polyline "ROAD" 0 0
    (list (list (at 0.0 (+ 80.0 off)) 0.0) (list (at 180.0 (+ 80.0 off)) quarter)
          (list (at (- 210.0 off) 110.0) 0.0) (list (at (- 210.0 off) 160.0) 0.0))))
(foreach a '((0.0 1.570796) (1.570796 3.141593) (3.141593 4.712389) (4.712389 6.283185))
  (entmake (list '(0 . "ARC") '(8 . "ROAD") (cons 10 (at 210.0 140.0)) '(40 . 9.0) (cons 50 (car a))
                 (cons 51 (cadr a)))))

;; Lots: eight to the south and six to the north, each with rounded corners at the road.
(setq n 0)
(repeat 8
  (setq x (* n 22.0))
  (lw "LOTS" T 0.0 (list (list x 40.0 0.0) (list (+ x 22.0) 40.0 0.0) (list (+ x 22.0) 73.0 quarter)
                         (list (+ x 19.0) 76.0 0.0) (list (+ x 3.0) 76.0 quarter) (list x 73.0 0.0)))
  (label "TEXT" (at (+ x 8.0) 58.0) 2.0 (strcat "LOT " (itoa (+ n 1))))
  (setq n (1+ n)))
(setq n 0)
(repeat 6
  (setq x (* n 28.0))
  (lw "LOTS" T 0.0 (list (list x 87.0 quarter) (list (+ x 3.0) 84.0 0.0) (list (+ x 25.0) 84.0 quarter)
                         (list (+ x 28.0) 87.0 0.0) (list (+ x 28.0) 120.0 0.0) (list x 120.0 0.0)))
  (label "TEXT" (at (+ x 10.0) 102.0) 2.0 (strcat "LOT " (itoa (+ n 9))))
  (setq n (1+ n)))

;; Contours: each metre as a 3D polyline, the half metres as lightweight polylines at their elevation.
(setq level 98.0)
(while (<= level 110.0)
  (setq points nil x 0.0)
  (while (<= x 240.0)
    (setq y (/ (- level 100.0 (* 1.5 (sin (/ x 40.0)))) 0.05))
    (if (and (>= y 0.0) (<= y 160.0)) (setq points (cons (list x y) points)))
    (setq x (+ x 8.0)))
  (setq points (reverse points))
  (if (> (length points) 2)
    (if (equal level (fix level) 1e-9)
      (poly3d "CONTOUR-INDEX" (mapcar '(lambda (p) (list (+ ox (car p)) (+ oy (cadr p)) level)) points))
      (lw "CONTOUR" nil level (mapcar '(lambda (p) (list (car p) (cadr p) 0.0)) points))))
  (setq level (+ level 0.5)))

;; A ditch along the south: its bottom and its two tops are breaklines.
(foreach side '((-3.0 0.8) (0.0 0.0) (3.0 0.8))
  (setq points nil x 0.0)
  (while (<= x 240.0)
    (setq p (at-ground x (+ 20.0 (car side) (* 4.0 (sin (/ x 30.0))))))
    (setq points (cons (list (car p) (cadr p) (+ (caddr p) -1.2 (cadr side))) points))
    (setq x (+ x 12.0)))
  (poly3d "BREAKLINE" (reverse points)))
(lw "DITCH" nil 0.0 '((0.0 20.0 0.1) (60.0 23.0 -0.2) (120.0 18.0 0.2) (180.0 22.0 0.0) (240.0 20.0 0.0)))

;; Fences.
(setq n 0)
(repeat 10
  (line "FENCE" (at (* n 22.0) 36.0) (at (+ (* n 22.0) 18.0) 36.0))
  (setq n (1+ n)))
(repeat 3
  (line "FENCE" (at-ground (+ 10.0 (* n 3.0)) 130.0) (at-ground (+ 30.0 (* n 5.0)) 150.0))
  (setq n (1+ n)))

;; Survey points on a grid that is a little off the square, as in the field.
(setq number 1 x 10.0)
(while (< x 240.0)
  (setq y 10.0)
  (while (< y 160.0)
    (survey-point number (at-ground (+ x (* 2.0 (sin number))) (+ y (* 2.0 (cos number))))
                  (nth (rem number 4) '("GND" "EP" "TOP" "TOE")))
    (setq number (1+ number) y (+ y 20.0)))
  (setq x (+ x 20.0)))

;; Trees and manholes.
(setq n 0)
(repeat 16
  (symbol "SPTTREE" "SYMBOLS" (at (+ 6.0 (* n 14.0)) (+ 126.0 (* 8.0 (sin n)))) (/ n 5.0))
  (setq n (1+ n)))
(setq n 0)
(repeat 6
  (symbol "SPTMANH" "SYMBOLS" (at (+ 15.0 (* n 30.0)) 80.0) 0.0)
  (setq n (1+ n)))

;; Core holes and channels are known by their extended data.
(setq n 0)
(repeat 5
  (entmake (list '(0 . "INSERT") '(8 . "HOLES") '(2 . "HOLE") (cons 10 (at-ground (+ 20.0 (* n 45.0)) 140.0))
                 (list -3 (list "COREHOLE" (cons 1000 (strcat "CH-" (itoa (1+ n)))) (cons 1040 (+ 12.5 n))
                                '(1070 . 1)))))
  (setq n (1+ n)))
(setq n 0)
(repeat 2
  (entmake (list '(0 . "INSERT") '(8 . "DITCH") '(2 . "WEIR") (cons 10 (at-ground (+ 60.0 (* n 120.0)) 20.0))
                 (list -3 (list "CHANNEL" (cons 1000 (strcat "WEIR-" (itoa (1+ n)))) '(1040 . 0.035)))))
  (setq n (1+ n)))

;; Titles.
(label "TEXT" (at 4.0 165.0) 4.0 "SAMPLE SURVEY SITE")
(label "TEXT" (at 4.0 161.5) 2.0 "Bearing of road 90%%d, station 0+00 to 1+80")
(entmake (list '(0 . "MTEXT") '(100 . "AcDbEntity") '(8 . "TEXT") '(100 . "AcDbMText") (cons 10 (at 150.0 170.0))
               '(40 . 2.0) '(41 . 80.0) '(71 . 1)
               '(1 . "All elevations in metres.\\PDitch {\\H3;bottom} as surveyed.")))
(princ)
