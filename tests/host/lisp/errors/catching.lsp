(setq e (vl-catch-all-apply '/ '(50 0)))
(print (vl-catch-all-error-p e))               ; expect: T
(print (vl-catch-all-error-message e))         ; expect: "divide by zero"
(print e)                                      ; expect: #<%catch-all-apply-error%>
(print (vl-catch-all-apply '+ '(1 2)))         ; expect: 3
(print (vl-catch-all-error-p 5))               ; expect: nil
(print (vl-catch-all-error-message (vl-catch-all-apply 'exit nil))) ; expect: "quit / exit abort"
(print (vl-catch-all-error-message (vl-catch-all-apply 'vl-exit-with-error '("mine")))) ; expect: "mine"
(print (vl-catch-all-error-message (vl-catch-all-apply '(lambda (x) (nosuch x)) '(1))))
; expect: "no function definition: NOSUCH"
; *error* isn't called for what is caught.
(defun *error* (m) (print m))
(vl-catch-all-apply 'car '(5))
(setq *error* nil)
(print (*push-error-using-command*))           ; expect: nil
(print (*push-error-using-stack*))             ; expect: nil
(print (*pop-error-mode*))                     ; expect: nil
(vl-bt)                                        ; expect: Backtrace:
(vl-catch-all-apply 'car 5)                    ; expect error: bad argument type: listp 5
(vl-catch-all-error-message 5)                 ; expect error: bad argument type: vl-catch-all-error-p 5
(vl-catch-all-error-p)                         ; expect error: too few arguments
(vl-exit-with-error 5)                         ; expect error: bad argument type: stringp 5
(vl-exit-with-error "own words")               ; expect error: own words
(exit 1)                                       ; expect error: too many arguments
(exit)                                         ; expect error: quit / exit abort
(quit)                                         ; expect error: quit / exit abort
(vl-bt 1)                                      ; expect error: too many arguments
