(princ "one bracket too many")
(setq a 1))
(princ "never printed")
