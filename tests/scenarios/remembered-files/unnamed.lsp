; A drawing that was never named remembers nothing.
(load "show.lsp")
(operation '(40 "C:\\OTHER\\ditch.pln" 1))
(operation '(48 "Pick in an unnamed drawing" "C:\\JOBS\\" "pln" 0))
(princ "a settings file: ")
(princ (findfile "Drawing1.ini"))
(princ)
