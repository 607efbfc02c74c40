; A cancel at a prompt of a command that a program sends ends the command and the program.
(defun *error* (message)
  (princ "\n*error* was called: ")
  (princ message)
  (princ ", lines drawn: ")
  (princ (if (setq lines (ssget "X" '((0 . "LINE")))) (sslength lines) 0)))
(command "_.LINE" pause "5,5" pause)
(princ "\nnever printed")
