(defun f (n) (+ 1 (f (1+ n))))
(f 0)
