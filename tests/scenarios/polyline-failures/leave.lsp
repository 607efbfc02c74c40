; Each round prints its number, and what the call gave back.
(setq n 0)
(defun round (operation)
  (princ (strcat "\n-- " (itoa (setq n (1+ n))) "\n"))
  (print (cf:zentutil usrdir$ operation "" lspdir$)))
(repeat 13 (round 15))
(repeat 2 (round 27))
; The file of the dialogs is not in this folder; in the second one it is, but without the dialog.
(foreach folder '("nowhere/" "without/")
  (princ (strcat "\n-- " folder "\n"))
  (print (cf:zentutil usrdir$ 15 "" folder)))
(princ "\n-- objects: ")
(princ (sslength (ssget "X")))
(princ)
