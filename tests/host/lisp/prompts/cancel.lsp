; ^C at a prompt of a LISP function ends the program through *error*.
; answer: ^C
; answer: ^C
(getint "Number: ")
; expect: Number: ^C
; expect error: Function cancelled
(defun *error* (m) (print (strcat "handled: " m)))
(progn (getpoint "\nPoint: ") (print "not reached"))
; expect: Point: ^C
; expect: "handled: Function cancelled"
; expect end
(print "on")                                   ; expect: "on"
; With no answers left the run ends; nothing catches that.
(vl-catch-all-apply 'getint '("\nLast: "))
; expect: Last:
; expect: "handled: Function cancelled"
; expect end
