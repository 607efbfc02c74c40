(setq f (open "@TMP@/one.txt" "w")) (princ "12345" f) (close f)
(print (vl-file-size "@TMP@/one.txt"))                 ; expect: 5
(print (vl-file-size "@TMP@/none"))                    ; expect: nil
(print (vl-file-size "@TMP@"))                         ; expect: 0
(print (vl-file-directory-p "@TMP@"))                  ; expect: T
(print (vl-file-directory-p "@TMP@/one.txt"))          ; expect: nil
(print (vl-file-copy "@TMP@/one.txt" "@TMP@/two.txt")) ; expect: 5
(print (vl-file-copy "@TMP@/one.txt" "@TMP@/two.txt")) ; expect: nil
(print (vl-file-copy "@TMP@/one.txt" "@TMP@/two.txt" t)) ; expect: 5
(print (vl-file-size "@TMP@/two.txt"))                 ; expect: 10
(print (vl-mkdir "@TMP@/sub"))                         ; expect: T
(print (vl-mkdir "@TMP@/sub"))                         ; expect: nil
(print (vl-directory-files "@TMP@" "*.txt"))           ; expect: ("one.txt" "two.txt")
(print (vl-directory-files "@TMP@" nil -1))            ; expect: ("sub")
(print (vl-directory-files "@TMP@" "*.*" 1))           ; expect: ("one.txt" "two.txt")
(print (vl-file-rename "@TMP@/one.txt" "@TMP@/two.txt")) ; expect: nil
(print (vl-file-rename "@TMP@/one.txt" "@TMP@/three.txt")) ; expect: T
(print (vl-file-delete "@TMP@/three.txt"))             ; expect: T
(print (vl-file-delete "@TMP@/three.txt"))             ; expect: nil
(print (vl-file-delete "@TMP@/sub"))                   ; expect: nil
(print (length (vl-file-systime "@TMP@/two.txt")))     ; expect: 8
(print (vl-file-systime "@TMP@/none"))                 ; expect: nil
(vl-file-size)                         ; expect error: too few arguments
(vl-file-copy "a" 5)                   ; expect error: bad argument type: stringp 5
(vl-file-rename "a")                   ; expect error: too few arguments
(vl-file-delete nil)                   ; expect error: bad argument type: stringp nil
(vl-file-directory-p 1)                ; expect error: bad argument type: stringp 1
(vl-file-systime 1)                    ; expect error: bad argument type: stringp 1
(vl-mkdir 1)                           ; expect error: bad argument type: stringp 1
(vl-directory-files 1)                 ; expect error: bad argument type: stringp 1
