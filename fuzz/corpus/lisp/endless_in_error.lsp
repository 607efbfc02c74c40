(defun *error* (m) (while T (princ m)))
(car 1)
