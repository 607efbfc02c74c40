(setvar "CMDECHO" 1)
(print (getvar "CMDECHO"))                     ; expect: 1
(print (setvar "cmdecho" 0))                   ; expect: 0
(print (getvar "cmdecho"))                     ; expect: 0
(print (getvar "NOSUCHVARIABLE"))              ; expect: nil
(print (getvar "CLAYER"))                      ; expect: "0"
(print (type (getvar "VIEWSIZE")))             ; expect: REAL
(print (setvar "LASTPOINT" '(1.0 2.0 3.0)))    ; expect: (1.0 2.0 3.0)
(print (getvar "LASTPOINT"))                   ; expect: (1.0 2.0 3.0)
(print (setvar "USERR1" 5))                    ; expect: 5
(print (getvar "USERR1"))                      ; expect: 5.0
(print (mapcar 'setvar '("cmdecho" "userr1") '(1 2.5))) ; expect: (1 2.5)
(print (setenv "ZENT_TEST" "x y"))             ; expect: "x y"
(print (getenv "zent_test"))                   ; expect: "x y"
(print (getenv "NO_SUCH_ENVIRONMENT"))         ; expect: nil
(setvar "NOSUCHVARIABLE" 1)                    ; expect error: variable setting rejected: "NOSUCHVARIABLE" 1
(setvar "CMDECHO" "x")                         ; expect error: variable setting rejected: "CMDECHO" "x"
(setvar "CDATE" 1.0)                           ; expect error: variable setting rejected: "CDATE" 1.0
(setvar "CMDECHO")                             ; expect error: too few arguments
(getvar 5)                                     ; expect error: bad argument type: stringp 5
(getenv 5)                                     ; expect error: bad argument type: stringp 5
(setenv "A" 5)                                 ; expect error: bad argument type: stringp 5
