; One question for each form that an answer can have; the values behind "=" are what LISP got.
(defun show (value) (princ "= ") (prin1 value) (terpri))

(setq height 12.5 corner '(1 2 3) nothing nil word "Deed")
(entmake '((0 . "LINE") (10 0 0 0) (11 10 0 0)))

; points
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(initget 1)
(show (getpoint "\nPoint, no Enter: "))
(initget "Undo eXit")
(show (getpoint '(0 0) "\nPoint [Undo/eXit]: "))
(initget 128 "Undo")
(show (getpoint "\nPoint or text [Undo]: "))
(show (getcorner '(0 0) "\nCorner: "))

; key words by their capital letters
(initget "Yes No")
(show (getkword "\nGo on [Yes/No]? "))
(repeat 4
  (initget 1 "LAyer LType eXit")
  (show (getkword "\nChange [LAyer/LType/eXit]: ")))

; numbers
(show (getint "\nCount: "))
(show (getreal "\nHeight: "))
(show (getreal "\nHeight: "))
(initget 6)
(show (getreal "\nPositive: "))
(show (getdist "\nDistance: "))
(show (getdist '(1 1) "\nDistance from 1,1: "))
(show (getdist "\nDistance by two points: "))
(show (getangle "\nAngle: "))
(show (getangle '(0 0) "\nAngle of a point: "))
(show (getorient "\nOrientation: "))

; texts
(show (getstring "\nWord: "))
(show (getstring T "\nText: "))
(show (getstring T "\nText: "))

; expressions and variables
(show (getreal "\nHeight: "))
(show (getpoint "\nPoint: "))
(show (getpoint "\nPoint: "))
(show (getstring T "\nText: "))
(show (getint "\nCount: "))
(show (getint "\nOuter count: "))
(initget "Deed Plan")
(show (getkword "\nSource [Deed/Plan]: "))
(show (getint "\nCount: "))

; keys
(show (getint "\nCount: "))
(show (getint "\nCount: "))

; picks; a point that hits nothing gives nil
(setvar "ERRNO" 0)
(show (entsel "\nPick: "))
(show (getvar "ERRNO"))
(show (cadr (entsel "\nPick: ")))
(show (cadr (entsel "\nPick: ")))
(show (cadr (entsel "\nPick: ")))
(show (cdr (assoc 0 (entget (car (entsel "\nPick: "))))))
(show (entsel "\nPick: "))
(show (getvar "ERRNO"))
(initget "All")
(show (entsel "\nPick [All]: "))
(show (entsel "\nPick: "))
(princ)
