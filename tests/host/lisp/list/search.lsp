(print (member 'c '(a b c d e)))     ; expect: (C D E)
(print (member 'q '(a b)))           ; expect: nil
(print (member '(1) '((0) (1) 2)))   ; expect: ((1) 2)
(print (assoc 'size '((name box) (width 3) (size 4.7)))) ; expect: (SIZE 4.7)
(print (assoc 8 '((0 . "LINE") (8 . "0"))))  ; expect: (8 . "0")
(print (assoc 9 nil))                ; expect: nil
(print (assoc "b" '(nil ("b" 1))))   ; expect: ("b" 1)
(print (subst 'q 'b '(a b (b) b)))   ; expect: (A Q (B) Q)
(print (subst '(8 . "1") '(8 . "0") '((0 . "X") (8 . "0")))) ; expect: ((0 . "X") (8 . "1"))
(assoc 1 '(1 2))                     ; expect error: bad association list: (1 2)
(assoc 1 "x")                        ; expect error: bad argument type: listp "x"
(member 1 2)                         ; expect error: bad argument type: listp 2
(subst 1 2)                          ; expect error: too few arguments
