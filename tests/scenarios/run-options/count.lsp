(princ "a is ") (princ a) (terpri) (princ)
