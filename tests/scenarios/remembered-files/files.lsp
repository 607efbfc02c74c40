; Files that are picked, one after the other; each line of answers.txt that isn't for a question of its own
; answers one pick.
(load "show.lsp")
(setq tmpdir$ "C:\\JOB\\")
(defun pick (standard extensions flags)
  (operation (list 48 (strcat "Pick " extensions) standard extensions flags)))

(operation '(40 "c:/other/ditch.pln" 1))
(operation '(40 "C:\\OTHER\\main.cl" 1))
(operation '(40 "C:\\OTHER\\none.txt" 0))
(operation '(40 "C:\\OTHER\\none.txt"))
(operation '(40))
(show-file "C:\\JOB\\SITE.ini")

; opens in the directory of the newest file of the kind; the choice becomes the newest
(pick "C:\\JOBS\\" "pln" 4)
; an existing one: no, no, then another; the default comes back
(pick "c:\\job\\lots.pln" "pln" 1)
; yes
(pick "" "txt;cl" 1)
; a default that names a file stays; Enter takes it
(pick " C:\\OTHER\\plain.pln " "pln" 0)
; cancelled
(pick "" "txt" 1)
(show-file "C:\\JOB\\SITE.ini")

; a pick of a file that is listed moves its line to the top
(pick "" "pln" 36)
(show-file "C:\\JOB\\SITE.ini")

; a save puts the variables in front, and the picks stay
(setq clfil "D:\\ROADS\\MAIN.CL")
(operation '(26 "C:\\JOB\\SITE.DWG"))
(show-file "C:\\JOB\\SITE.ini")
(pick "" "cl" 0)

; nothing is remembered while saving is off, and what is remembered is used
(setq do_ini 0)
(pick "" "pln" 0)
(setq do_ini nil tmpdir$ nil)
(pick "x.pln" "pln" 0)
(show-file "C:\\JOB\\SITE.ini")

(operation '(41 "D:/jobs/site/"))
(show-file "C:\\product\\config.pik")
(operation '(41 "\\shared\\site\\"))
(operation '(41))
(show-file "C:\\product\\config.pik")
