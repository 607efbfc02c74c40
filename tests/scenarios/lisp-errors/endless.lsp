(setq i 0)
(while T (setq i (1+ i)))
(princ "never printed")
