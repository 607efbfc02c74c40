(defun own (x) x)
(print (mapcar 'type (list 1 1.5 "a" '(1) 'a nil car own (lambda (x) x) setq)))
; expect: (INT REAL STR LIST SYM nil SUBR USUBR USUBR SUBR)
(print (type (ssadd)))         ; expect: PICKSET
(print (type (open "@TMP@/t.txt" "w"))) ; expect: FILE
(print (type (vl-catch-all-apply '/ '(1 0)))) ; expect: VL-CATCH-ALL-APPLY-ERROR
(type)                         ; expect error: too few arguments
