(setq root (namedobjdict))
(print (type root))                            ; expect: ENAME
(print (cdr (assoc 0 (entget root))))          ; expect: "DICTIONARY"
(print (cdr (assoc 0 (dictsearch root "ACAD_GROUP")))) ; expect: "DICTIONARY"
(print (dictsearch root "NOSUCH"))             ; expect: nil
(print (listp (dictnext root t)))              ; expect: T
(print (listp (layoutlist)))                   ; expect: T
(setq x (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (280 . 1) (1 . "kept"))))
(print (eq (dictadd root "ZENT" x) x))         ; expect: T
(print (assoc 1 (dictsearch root "zent")))     ; expect: (1 . "kept")
(print (dictadd root "ZENT" x))                ; expect: nil
(print (dictrename root "ZENT" "ZENT2"))       ; expect: "ZENT2"
(print (dictsearch root "ZENT"))               ; expect: nil
(print (eq (dictremove root "ZENT2") x))       ; expect: T
(print (dictremove root "ZENT2"))              ; expect: nil
(namedobjdict 1)                               ; expect error: too many arguments
(dictsearch root 5)                            ; expect error: bad argument type: stringp 5
(dictnext 5)                                   ; expect error: bad argument type: lentityp 5
(dictadd root "A")                             ; expect error: too few arguments
(dictremove 5 "A")                             ; expect error: bad argument type: lentityp 5
(dictrename root "A" 5)                        ; expect error: bad argument type: stringp 5
(layoutlist 1)                                 ; expect error: too many arguments
