; Scope is dynamic: a function sees the variables of its callers.
(setq x 1)
(defun show () x)
(defun outer (x) (show))
(print (outer 5))                   ; expect: 5
(print (show))                      ; expect: 1
(defun locals (/ x) (setq x 9) (show))
(print (locals))                    ; expect: 9
(print x)                           ; expect: 1
; A local is nil at first, and a local function goes with its call.
(defun first-nil (/ x) (null x))
(print (first-nil))                 ; expect: T
(defun with-inner (/ inner) (defun inner (y) (* y 2)) (inner 4))
(print (with-inner))                ; expect: 8
(print (boundp 'inner))             ; expect: nil
; Bindings are put back after an error.
(defun fails (x) (car x))
(fails 7)                           ; expect error: bad argument type: consp 7
(print x)                           ; expect: 1
(vl-catch-all-apply 'fails '(7))
(print x)                           ; expect: 1
; A program may redefine the function that runs.
(defun once () (setq once nil) "ran")
(print (once))                      ; expect: "ran"
(once)                              ; expect error: no function definition: ONCE
(outer)                             ; expect error: too few arguments
(outer 1 2)                         ; expect error: too many arguments
