(print (cdr (assoc 2 (tblsearch "LAYER" "0"))))   ; expect: "0"
(print (tblsearch "LAYER" "nosuch"))              ; expect: nil
(print (cdr (assoc 2 (tblnext "LAYER" t))))       ; expect: "0"
(print (tblnext "LAYER"))                         ; expect: nil
(print (type (tblobjname "LAYER" "0")))           ; expect: ENAME
(print (cdr (assoc 0 (entget (tblobjname "LAYER" "0"))))) ; expect: "LAYER"
(print (tblobjname "LAYER" "nosuch"))             ; expect: nil
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "NEW") (70 . 0) (62 . 5) (6 . "Continuous")))
(print (cdr (assoc 62 (tblsearch "layer" "new")))) ; expect: 5
(print (snvalid "name"))                          ; expect: T
(print (snvalid "a|b"))                           ; expect: nil
(print (snvalid "a|b" 1))                         ; expect: T
(print (snvalid "a*b"))                           ; expect: nil
(print (snvalid ""))                              ; expect: nil
(tblsearch "LAYER")                               ; expect error: too few arguments
(tblsearch "LAYER" 5)                             ; expect error: bad argument type: stringp 5
(tblnext 5)                                       ; expect error: bad argument type: stringp 5
(tblobjname "LAYER" 5)                            ; expect error: bad argument type: stringp 5
(snvalid 5)                                       ; expect error: bad argument type: stringp 5
