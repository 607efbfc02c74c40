(setq f (open "@TMP@/part.lsp" "w"))
(write-line "(setq loaded 5)" f)
(write-line "(* loaded 2)" f)
(close f)
(print (load "@TMP@/part.lsp"))        ; expect: 10
(print (load "@TMP@/part"))            ; expect: 10
(print loaded)                         ; expect: 5
(print (load "@TMP@/none" "absent"))   ; expect: "absent"
(print (load "@TMP@/none" (lambda () 3))) ; expect: 3
(setq f (open "@TMP@/auto.lsp" "w"))
(write-line "(defun c:autocmd () (print \"in file\"))" f)
(close f)
(autoload "@TMP@/auto" '("autocmd"))
(c:autocmd)                            ; expect: "in file"
(load "nosuchfile")                    ; expect error: LOAD failed: "nosuchfile"
(load 5)                               ; expect error: bad argument type: stringp 5
(load)                                 ; expect error: too few arguments
(autoload "x" '(1))                    ; expect error: bad argument type: stringp 1
(autoload "x")                         ; expect error: too few arguments
