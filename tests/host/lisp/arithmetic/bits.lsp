(print (logand 7 15 3))        ; expect: 3
(print (logior 1 2 4))         ; expect: 7
(print (logand))               ; expect: 0
(print (~ 100))                ; expect: -101
(print (lsh 2 1))              ; expect: 4
(print (lsh 2 -1))             ; expect: 1
(print (lsh 40 2))             ; expect: 160
(print (lsh 1 32))             ; expect: 0
(print (lsh -1 -28))           ; expect: 15
(print (boole 6 12 5))         ; expect: 9
(print (boole 1 12 5))         ; expect: 4
(print (boole 7 12 5))         ; expect: 13
(print (boole 8 3 9))          ; expect: -12
(logand 1.0 2)                 ; expect error: bad argument type: fixnump: 1.0
(~ nil)                        ; expect error: bad argument type: fixnump: nil
(lsh 1)                        ; expect error: too few arguments
