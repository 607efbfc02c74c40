; Arrows that a program draws: what it has drawn is answered as a selection set.
(setvar "CMDECHO" 0) ; the commands that draw the heads needn't be seen
(defun members (set / i)
  (if set
    (progn (setq i 0)
      (repeat (sslength set)
        (princ (strcat " " (cdr (assoc 0 (entget (ssname set i))))))
        (setq i (1+ i))))
    (princ " nothing"))
  (princ "\n"))
(foreach style '(0 1 2 3)
  (princ (strcat "style " (itoa style) ":"))
  (members (cf:zentutil usrdir$ 5 1.0 6.0 (list (+ 5130.0 (* 30 style)) 10110.0) (list (+ 5150.0 (* 30 style)) 10110.0)
                        25.0 style "NOTES" nil)))
(princ "pair:")
(members (cf:zentutil usrdir$ 9 0.0 0.0 '(5130.0 10080.0) '(5160.0 10080.0) 6.0))
(princ "too short:")
(members (cf:zentutil usrdir$ 5 1.0 6.0 '(5130.0 10050.0) '(5136.0 10050.0) 25.0 0 "NOTES" nil))
; What is left to a program that asks again.
(princ (strcat (getvar "CLAYER") " " (rtos (getvar "DIMASZ") 2 2) "\n"))
