(defun area-of (points / total)
  (setq total 0.0)
  (foreach p points
    (setq total (+ total (cadr p))))
  total)

(defun report (name points)
  (princ (strcat name ": "))
  (princ (area-of points)))

(report "first" '((1 2) (3 4)))
(terpri)
(report "second"
  '((1 2) (3)))
(princ "never printed")
