(princ "what stands before is run")
(defun broken (x)
  (if x
    (princ "a quote is missing)))

(broken T)
