(defun box (l) (mapcar '(lambda (p) (mapcar '(lambda (x) (rtos x 2 3)) p)) (textbox l)))
(setvar "TEXTSIZE" 3.0)
(setvar "DIMZIN" 8)
(print (box '((1 . "AB"))))                    ; expect: (("0" "0" "0") ("5" "3" "0"))
(print (box '((1 . "gy") (40 . 6.0))))         ; expect: (("0" "-2" "0") ("10" "4" "0"))
(print (box '((1 . "ab") (40 . 3.0) (41 . 0.5)))) ; expect: (("0" "0" "0") ("2.5" "3" "0"))
(print (box '((1 . "%%uAB%%u") (40 . 3.0))))   ; expect: (("0" "0" "0") ("5" "3" "0"))
(print (box '((1 . "I") (40 . 3.0) (51 . 0.78539816339744831)))) ; expect: (("0" "0" "0") ("5" "3" "0"))
(print (box '((1 . "I") (40 . 3.0) (51 . -0.78539816339744831)))) ; expect: (("-3" "0" "0") ("2" "3" "0"))
; As if it began at 0,0 and wasn't turned, wherever it is.
(entmake '((0 . "TEXT") (1 . "AB") (10 5.0 5.0 0.0) (11 50.0 60.0 7.0) (40 . 3.0) (50 . 1.0) (71 . 2) (72 . 2) (73 . 3)))
(print (box (entget (entlast))))               ; expect: (("0" "0" "0") ("5" "3" "0"))
(entmake '((0 . "STYLE") (2 . "FIXED") (70 . 0) (40 . 6.0) (41 . 2.0) (50 . 0.0) (71 . 0) (42 . 6.0) (3 . "arial.ttf") (4 . "")))
(print (box '((1 . "I") (7 . "FIXED"))))       ; expect: (("0" "0" "0") ("4.659" "6" "0"))
(print (box '((1 . "I") (7 . "NOSUCH"))))      ; expect: (("0" "0" "0") ("2" "3" "0"))
(print (box '((1 . ""))))                      ; expect: (("0" "0" "0") ("0" "0" "0"))
(print (textbox nil))                          ; expect: nil
(print (textbox '((40 . 2.0))))                ; expect: nil
(textbox)                                      ; expect error: too few arguments
(textbox 5)                                    ; expect error: bad argument type: listp 5
