(print (strcat))                       ; expect: ""
(print (strcat "a" "" "bc"))           ; expect: "abc"
(print (strlen "abc"))                 ; expect: 3
(print (strlen "one" "two" ""))        ; expect: 6
(print (strcase "Sample"))             ; expect: "SAMPLE"
(print (strcase "Sample" t))           ; expect: "sample"
(print (strcase "\344\337\330\367"))   ; expect: "ÄßØ÷"
(print (substr "abcde" 2))             ; expect: "bcde"
(print (substr "abcde" 2 1))           ; expect: "b"
(print (substr "abcde" 3 90))          ; expect: "cde"
(print (substr "abc" 4))               ; expect: ""
(print (ascii "A"))                    ; expect: 65
(print (ascii ""))                     ; expect: 0
(print (ascii "BIG"))                  ; expect: 66
(print (chr 65))                       ; expect: "A"
(print (chr 0))                        ; expect: ""
(print (wcmatch "Name" "N*"))          ; expect: T
(print (wcmatch "Name" "???,~*m*,N*")) ; expect: T
(print (wcmatch "Name" "n*"))          ; expect: nil
(strcat "a" nil)                       ; expect error: bad argument type: stringp nil
(strlen 5)                             ; expect error: bad argument type: stringp 5
(strcase 'a)                           ; expect error: bad argument type: stringp A
(substr "abc" 0)                       ; expect error: bad argument value: positive 0
(substr "abc" 1 -1)                    ; expect error: bad argument value: non-negative -1
(substr "abc")                         ; expect error: too few arguments
(substr "abc" "1")                     ; expect error: bad argument type: fixnump: "1"
(ascii 65)                             ; expect error: bad argument type: stringp 65
(chr "A")                              ; expect error: bad argument type: fixnump: "A"
(chr 256)                              ; expect error: bad argument value: character code 256
(wcmatch "a")                          ; expect error: too few arguments
(wcmatch "a" 1)                        ; expect error: bad argument type: stringp 1
