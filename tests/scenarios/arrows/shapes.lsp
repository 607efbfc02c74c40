; What came behind the drawing's last object, "before": type, layer, and the first three places of each.
(defun place (p) (strcat (rtos (car p) 2 2) "," (rtos (cadr p) 2 2)))
(defun show (/ e g n)
  (setq e before)
  (while (setq e (entnext e))
    (setq g (entget e) n 0)
    (princ (strcat "\n" (cdr (assoc 0 g)) " on " (cdr (assoc 8 g)) ","))
    (foreach pair g
      (if (and (<= 10 (car pair) 13) (< n 3))
        (progn (princ (strcat " " (place (cdr pair)))) (setq n (1+ n)))))
    (if (assoc 90 g) (princ (strcat " ... " (itoa (cdr (assoc 90 g))) " in all"))))
  (princ "\n")
  (princ))
(setq before (entlast))
(setvar "CMDECHO" 0) ; the commands that draw the head needn't be seen
(setvar "DIMASZ" 3.0)
