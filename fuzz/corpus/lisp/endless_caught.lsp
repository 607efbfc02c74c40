(while T (vl-catch-all-apply '(lambda () (/ 1 0))))
