(princ "abc
