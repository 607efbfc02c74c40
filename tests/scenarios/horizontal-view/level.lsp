; The tool once for each answer below; behind it the twist of the view in degrees.
(defun told (/ turn)
  (setq turn (* 180.0 (/ (getvar "VIEWTWIST") pi)))
  (princ (strcat "\nTwist " (rtos (if (> turn 359.99999) (- turn 360.0) turn) 2 6) "\n")))

(princ "The kerb, its upper end to the right:\n")
(c:horizview) (told)
(princ "\nIts lower end to the right:\n")
(c:horizview) (told)
(princ "\nA wall of the house:\n")
(c:horizview) (told)
(princ "\nThe second leg of the ditch:\n")
(c:horizview) (told)

(princ "\nNothing, a tree, a pick past the end of the ditch:\n")
(c:horizview) (told)
(c:horizview) (told)
(c:horizview) (told)

; The kerb in each unit of angles, from the x axis and from north clockwise.
(foreach unit '(0 1 2 3 4)
  (foreach north '(nil t)
    (setvar "AUNITS" unit)
    (setvar "ANGBASE" (if north (/ pi 2) 0.0))
    (setvar "ANGDIR" (if north 1 0))
    (princ (strcat "\nUnit " (itoa unit) (if north ", from north clockwise" "") ":\n"))
    (c:horizview) (told)))

; Seen level, in file and session alike.
(setvar "AUNITS" 0) (setvar "ANGBASE" 0.0) (setvar "ANGDIR" 0)
(defun seen (p) (trans p 0 2))
(princ (strcat "\nOn the screen the kerb rises by "
               (rtos (abs (- (cadr (seen '(640040.0 5120030.0 0.0))) (cadr (seen '(640000.0 5120000.0 0.0))))) 2 4)
               " and runs "
               (rtos (- (car (seen '(640040.0 5120030.0 0.0))) (car (seen '(640000.0 5120000.0 0.0)))) 2 4) "\n"))
(princ)
