; A view is turned against lines until each lies level, in all units of angles; then what is seen is used.
(setvar "CMDECHO" 0)
(defun degrees (a) (rtos (/ (* 180.0 a) pi) 2 4))

; Where a place of the drawing is on the screen.
(defun seen (p) (trans p 0 2))

; Whether a line is seen level, from left to right.
(defun is-level (p q / d)
  (setq d (mapcar '- (seen q) (seen p)))
  (if (and (> (car d) 0) (< (abs (/ (cadr d) (car d))) 1e-8)) "level" "aslant"))

(defun level (p q / text)
  (setq text (angtos (- (* 2 pi) (angle p q)) -1 9))
  (command "_.DVIEW" "_C" (getvar "EXTMIN") (getvar "EXTMAX") "" "_TW" text "")
  (princ (strcat "\n  " text ": twist " (degrees (getvar "VIEWTWIST")) ", " (is-level p q))))

(command "_.LINE" '(0 0) '(100 40) "")
(command "_.LINE" '(100 40) '(60 -30) "")
(command "_.POINT" '(60 50))
(foreach rules '((0 0 0) (1 0 0) (2 0 0) (3 0 0) (4 0 0) (0 1 90) (1 1 90) (2 0 30) (3 1 30) (4 1 90))
  (setvar "AUNITS" (car rules))
  (setvar "ANGDIR" (cadr rules))
  (setvar "ANGBASE" (/ (* pi (caddr rules)) 180))
  (princ (strcat "\nAUNITS " (itoa (car rules)) " ANGDIR " (itoa (cadr rules)) " ANGBASE " (itoa (caddr rules))))
  (level '(0 0) '(100 40))
  (level '(100 40) '(60 -30)))
(setvar "AUNITS" 0)
(setvar "ANGDIR" 0)
(setvar "ANGBASE" 0)

; By hand, with wrong answers between; the answers stand in answers.txt.
(terpri)
(setvar "CMDECHO" 1)
(command "_.DVIEW" pause pause pause pause pause pause)
(setvar "CMDECHO" 0)
(princ (strcat "\nTwist by hand: " (degrees (getvar "VIEWTWIST"))))

; A window is a rectangle of the screen: here its two corners lie one above the other in the drawing.
(command "_.DVIEW" "" "_TW" 45 "")
(defun held (mode p q / set) (setq set (ssget mode p q)) (if set (sslength set) 0))
(princ (strcat "\nWindow in a twisted view: " (itoa (held "_W" '(50 0) '(50 100)))))
(command "_.DVIEW" "" "_TW" 0 "")
(princ (strcat "\nThe same in a level one: " (itoa (held "_W" '(50 0) '(50 100)))))

; Undo takes the twist back, and each zoom keeps it.
(command "_.DVIEW" "" "_TW" 30 "")
(command "_.ZOOM" "_E")
(command "_.ZOOM" "0.5X")
(princ (strcat "\nZoomed: " (degrees (getvar "VIEWTWIST"))))
(command "_.ZOOM" "_P")
(command "_.UNDO" 4)
(princ (strcat "\nUndone: " (degrees (getvar "VIEWTWIST"))))
(command "_.ZOOM" "_C" '(50 5) 200)
(command "_.DVIEW" "" "_TW" 30 "")
(princ)
