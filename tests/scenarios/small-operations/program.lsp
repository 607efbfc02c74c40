; Each operation once, as programs call them. The road's centre line is the object 48.
(defun say (what value) (princ (strcat "\n" what ": ")) (princ value) (princ))
(defun degrees (radians) (if radians (angtos radians 0 1)))
(setq road (handent "48") lot (ssname (ssget "X" '((0 . "LWPOLYLINE") (8 . "LOTS"))) 0))

(say "ends" (cf:zentutil usrdir$ 10 road '(5150.0 10085.0 0.0)))
(say "beside the end" (cf:zentutil usrdir$ 10 road '(5150.0 10300.0 0.0)))
(say "direction" (degrees (cf:zentutil usrdir$ 11 road '(5150.0 10085.0 0.0))))
(say "towards the other end" (degrees (cf:zentutil usrdir$ 11 road '(5030.0 10085.0 0.0))))
(say "vertices" (cf:zentutil usrdir$ 23 road 1))
(say "without arcs" (cf:zentutil usrdir$ 23 road 0))
(say "vertices of a closed one" (length (cf:zentutil usrdir$ 23 lot 1)))
(say "of no polyline" (cf:zentutil usrdir$ 23 (handent "3C1") 1))

; The trees follow the road; the last four stand along its leg to the north.
(cf:zentutil usrdir$ 12 road (ssget "X" '((2 . "SPTTREE"))) 0.0)

; A fence is copied, dragged to its place, and another copy is thrown away by Enter.
(defun copy-of (e) (entmake (cdr (entget e))) (ssadd (entlast)))
(setq fence (ssname (ssget "X" '((0 . "LINE") (8 . "FENCE"))) 0) from (cdr (assoc 10 (entget fence))))
(say "dropped" (cf:zentutil usrdir$ 16 (copy-of fence) from "\nPlace of the fence: "))
(say "from" from)
(say "to" (cdr (assoc 10 (entget (entlast)))))
(say "thrown away" (cf:zentutil usrdir$ 16 (copy-of fence) from "\nPlace of the fence: "))
(say "cancelled" (cf:zentutil usrdir$ 16 (copy-of fence) from "\nPlace of the fence: "))
(say "fences" (sslength (ssget "X" '((0 . "LINE") (8 . "FENCE")))))

(say "second point" (cf:zentutil usrdir$ 29 nil from))
(say "holes" (sslength (cf:zentutil usrdir$ 28)))
(princ "\n")
(princ)
