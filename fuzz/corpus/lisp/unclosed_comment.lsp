(princ 1) ;| never ends
(princ 2)