(print (regapp "SURVEY"))                      ; expect: "SURVEY"
(print (regapp "SURVEY"))                      ; expect: nil
(regapp "OTHER")
(setq e (entmakex '((0 . "POINT") (10 1.0 2.0 3.0)
  (-3 ("SURVEY" (1000 . "text") (1070 . 5) (1040 . 2.5) (1010 1.0 2.0 3.0)) ("OTHER" (1071 . 70000))))))
(print (assoc -3 (entget e)))                  ; expect: nil
(print (assoc -3 (entget e '("SURVEY"))))
; expect: (-3 ("SURVEY" (1000 . "text") (1070 . 5) (1040 . 2.5) (1010 1.0 2.0 3.0)))
(print (length (assoc -3 (entget e '("*")))))  ; expect: 3
(print (< 16000 (xdroom e) 16383))             ; expect: T
(print (> (xdsize '(("SURVEY" (1000 . "text")))) 5)) ; expect: T
(print (= (xdsize '(-3 ("SURVEY" (1000 . "text")))) (xdsize '(("SURVEY" (1000 . "text")))))) ; expect: T
(entget e 5)                                   ; expect error: bad argument type: listp 5
(entget e '(5))                                ; expect error: bad argument type: stringp 5
(entmake '((0 . "POINT") (10 1.0 2.0) (-3 5))) ; expect error: bad DXF group: (-3 5)
(regapp 5)                                     ; expect error: bad argument type: stringp 5
(xdroom 5)                                     ; expect error: bad argument type: lentityp 5
(xdsize nil)                                   ; expect error: bad argument type: consp nil
