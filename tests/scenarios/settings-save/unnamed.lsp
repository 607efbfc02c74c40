; A drawing that was never named has no settings.
(setq clfil "C:\\JOB\\MAIN.CL")
(princ "\n--- unnamed: ")
(princ (cf:zentutil "C:\\JOB\\user\\" 26 (strcat (getvar "DWGPREFIX") (getvar "DWGNAME"))))
(princ (findfile "Drawing1.ini"))
(princ (cf:zentutil "C:\\JOB\\user\\" 26 "C:\\JOB\\MyDrawing2.dwg"))
(load "block.lsp")
(princ)
