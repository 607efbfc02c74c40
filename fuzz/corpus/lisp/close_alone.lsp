(princ 1))
(princ 2)