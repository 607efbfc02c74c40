(setvar "CMDECHO" 0)
(command "_.LINE" '(0 0) '(10.0 0.0) "")
(setq g (entget (entlast)))
(print (cdr (assoc 0 g)))                      ; expect: "LINE"
(print (assoc 11 g))                           ; expect: (11 10.0 0.0 0.0)
; Several calls may serve one command; one without arguments cancels it.
(command "_.LINE" "0,5") (command "10,5") (command "")
(print (assoc 10 (entget (entlast))))          ; expect: (10 0.0 5.0 0.0)
(setq before (entlast))
(command "_.CIRCLE" '(0 0)) (command)
(print (eq before (entlast)))                  ; expect: T
(print (vl-cmdf "_.POINT" '(1.0 2.0 3.0)))     ; expect: T
(print (cdr (assoc 0 (entget (entlast)))))     ; expect: "POINT"
(command-s "_.ERASE" (entlast) "")
(print (eq before (entlast)))                  ; expect: T
(print (command nil))                          ; expect: nil
(print (mapcar 'command (list "_.POINT" '(7 7)))) ; expect: (nil nil)
(print (assoc 10 (entget (entlast))))          ; expect: (10 7.0 7.0 0.0)
(print (menucmd "M=$(edtime,0,DD)"))           ; expect: nil
(print (initcommandversion 2))                 ; expect: nil
(menucmd 5)                                    ; expect error: bad argument type: stringp 5
(initcommandversion "2")                       ; expect error: bad argument type: fixnump: "2"
