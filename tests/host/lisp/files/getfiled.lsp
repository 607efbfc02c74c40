; answer: /some/path.txt
; answer: ^C
(print (getfiled "Choose" "" "txt" 0))
; expect: [file] Choose /some/path.txt
; expect: "/some/path.txt"
(print (getfiled "Choose" "" "txt" 1))
; expect: [file] Choose ^C
; expect: nil
(getfiled "a" "b" "c")                         ; expect error: too few arguments
(getfiled "a" "b" "c" "d")                     ; expect error: bad argument type: fixnump: "d"
