; The objects that a window of the sample site crosses, a line each: type, layer, heights of its first places
; (a polyline in space: of all vertices), and what its attributes tell.
(defun height (z) (strcat " " (rtos z 2 2)))

(defun heights-of (e / g at part)
  (setq g (entget e))
  (princ (strcat (cdr (assoc 0 g)) " " (cdr (assoc 8 g))))
  (if (assoc 38 g)
    (princ (height (cdr (assoc 38 g))))
    (if (/= (cdr (assoc 0 g)) "POLYLINE")
      (foreach pair g (if (member (car pair) '(10 11)) (princ (height (cadddr pair)))))))
  (if (= 1 (cdr (assoc 66 g)))
    (progn
      (setq at (entnext e))
      (while (/= (cdr (assoc 0 (setq part (entget at)))) "SEQEND")
        (princ (strcat (height (cadddr (assoc 10 part)))
          (if (= (cdr (assoc 0 part)) "ATTRIB") (strcat " '" (cdr (assoc 1 part)) "'") "")))
        (setq at (entnext at)))))
  (terpri))

(defun show (/ set i)
  (setq set (ssget "C" '(5008.0 10005.0) '(5016.0 10052.0)) i 0)
  (while (< i (sslength set))
    (heights-of (ssname set i))
    (setq i (1+ i)))
  (princ))
