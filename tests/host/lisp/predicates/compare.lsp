(print (= 4 4.0))              ; expect: T
(print (= 20 388))             ; expect: nil
(print (= 1 1 1 2))            ; expect: nil
(print (= "hello" "hello"))    ; expect: T
(print (= "a" 'a))             ; expect: nil
(print (= 'a 'A))              ; expect: T
(print (= nil nil))            ; expect: T
(print (= 5))                  ; expect: T
(print (/= 10 20 10 20))       ; expect: T
(print (/= 10 20 10 20 20))    ; expect: nil
(print (/= 5.43 "you"))        ; expect: T
(print (/= "you" "you"))       ; expect: nil
(print (< 1 2 3))              ; expect: T
(print (< 1 3 2))              ; expect: nil
(print (< "b" "c"))            ; expect: T
(print (> 17 16 15))           ; expect: T
(print (> "a" "A"))            ; expect: T
(print (<= 1 1 2.5))           ; expect: T
(print (>= 9 9 4))             ; expect: T
(print (>= 9 10))              ; expect: nil
(< 1 "a")                      ; expect error: bad argument type for compare: 1 "a"
(> nil 3)                      ; expect error: bad argument type for compare: nil 3
(=)                            ; expect error: too few arguments
