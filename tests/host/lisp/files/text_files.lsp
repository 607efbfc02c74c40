(setq f (open "@TMP@/a.txt" "w"))
(print (write-line "first" f))           ; expect: "first"
(write-char 66 f)
(princ "x\"y" f) (prin1 "q" f) (print 5 f)
(print (close f))                        ; expect: nil
(setq f (open "@TMP@/a.txt" "a"))
(write-line "last" f)
(close f)
(setq f (open "@TMP@/a.txt" "r"))
(print (read-line f))                    ; expect: "first"
(print (read-char f))                    ; expect: 66
(print (read-line f))                    ; expect: "x\"y\"q\""
(print (read-line f))                    ; expect: "5 last"
(print (read-line f))                    ; expect: nil
(print (read-char f))                    ; expect: nil
(close f)
(setq f (open "@TMP@/a.txt" "R"))
(repeat 5 (read-char f))
(print (read-char f))                    ; expect: 10
(close f)
; Lines of any length.
(setq s "0123456789")
(repeat 10 (setq s (strcat s s)))
(setq f (open "@TMP@/long.txt" "w")) (write-line s f) (princ "end" f) (close f)
(setq f (open "@TMP@/long.txt" "r"))
(print (= (read-line f) s))              ; expect: T
(print (read-line f))                    ; expect: "end"
(close f)
(print (open "@TMP@/none.txt" "r"))      ; expect: nil
(print (open "@TMP@/no/dir.txt" "w"))    ; expect: nil
(print (= (findfile "@TMP@/a.txt") nil)) ; expect: nil
(print (findfile "@TMP@/none.txt"))      ; expect: nil
(print (findfile ""))                    ; expect: nil
(print (findtrustedfile "@TMP@/none"))   ; expect: nil
(read-line f)                            ; expect error: bad argument type: streamp #<file "@TMP@/long.txt">
(close f)                                ; expect error: bad argument type: streamp #<file "@TMP@/long.txt">
(close "f")                              ; expect error: bad argument type: streamp "f"
(close)                                  ; expect error: too few arguments
(open "x" "q")                           ; expect error: bad argument value: open mode "q"
(open "x")                               ; expect error: too few arguments
(read-line 5)                            ; expect error: bad argument type: streamp 5
(read-char "x")                          ; expect error: bad argument type: streamp "x"
(findfile 5)                             ; expect error: bad argument type: stringp 5
(findtrustedfile)                        ; expect error: too few arguments
(setq f (open "@TMP@/w.txt" "w"))
(read-line f)                            ; expect error: bad argument type: streamp #<file "@TMP@/w.txt">
