; *error* is called before the bindings of the failed functions are put back.
(defun c:tool (/ saved *error*)
  (setq saved "kept")
  (defun *error* (message)
    (print (list message saved)))
  (car 5))
(c:tool)
; expect: ("bad argument type: consp 5" "kept")
; expect end
(print (list saved *error*))                   ; expect: (nil nil)
(nosuch)                                       ; expect error: no function definition: NOSUCH
; An error within the handler is told and ends the program.
(defun *error* (m) (print (strcat "first: " m)) (car 7))
(+ 1 "x")
; expect: "first: bad argument type: numberp: \"x\""
; expect error: bad argument type: consp 7
(setq *error* nil)
(print "after")                                ; expect: "after"
; Any function will do.
(setq *error* '(lambda (m) (print (list 'listed m))))
(exit)
; expect: (LISTED "quit / exit abort")
; expect end
(setq *error* print)
(car 1)
; expect: "bad argument type: consp 1"
; expect end
(setq *error* 5)
(car 1)                                        ; expect error: bad argument type: consp 1
