(print (list))                       ; expect: nil
(print (list 1 "a" 'b nil))          ; expect: (1 "a" B nil)
(print (cons 'a '(b c)))             ; expect: (A B C)
(print (cons 8 "0"))                 ; expect: (8 . "0")
(print (cons 'a nil))                ; expect: (A)
(print (append '(a b) '(c d)))       ; expect: (A B C D)
(print (append))                     ; expect: nil
(print (append nil '(1) nil '(2) nil)) ; expect: (1 2)
(print (reverse '((a) b c)))         ; expect: (C B (A))
(print (reverse nil))                ; expect: nil
(print (length '(a b (c d))))        ; expect: 3
(print (length nil))                 ; expect: 0
(print (last '(a b (c))))            ; expect: (C)
(print (last nil))                   ; expect: nil
(print (nth 1 '(a b c)))             ; expect: B
(print (nth 3 '(a b c)))             ; expect: nil
(append '(1) 2)                      ; expect error: bad argument type: listp 2
(reverse "abc")                      ; expect error: bad argument type: listp "abc"
(length '(1 . 2))                    ; expect error: bad list: (1 . 2)
(length 5)                           ; expect error: bad argument type: listp 5
(last 'a)                            ; expect error: bad argument type: listp A
(nth -1 '(1))                        ; expect error: bad argument value: non-negative -1
(nth '(1) 1)                         ; expect error: bad argument type: fixnump: (1)
(cons 1)                             ; expect error: too few arguments
