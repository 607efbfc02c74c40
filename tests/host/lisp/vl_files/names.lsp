(print (vl-filename-base "c:\\dir\\acadwin.exe"))     ; expect: "acadwin"
(print (vl-filename-base "c:\\my.dir"))               ; expect: "my"
(print (vl-filename-base "/a.b/c"))                   ; expect: "c"
(print (vl-filename-extension "c:\\d\\output.txt"))   ; expect: ".txt"
(print (vl-filename-extension "c:\\d.x\\output"))     ; expect: nil
(print (vl-filename-directory "c:\\dir\\a.exe"))      ; expect: "c:\\dir"
(print (vl-filename-directory "a.exe"))               ; expect: ""
(print (vl-filename-directory "/a/b/c.lsp"))          ; expect: "/a/b"
(print (vl-filename-directory "c:\\a.exe"))           ; expect: "c:\\"
(setq n (vl-filename-mktemp "work.tmp" "@TMP@"))
(print (wcmatch (vl-filename-base n) "work###"))      ; expect: T
(print (vl-filename-extension n))                     ; expect: ".tmp"
(print (= n (vl-filename-mktemp "work.tmp" "@TMP@"))) ; expect: nil
(print (wcmatch (vl-filename-mktemp nil nil ".dcl") "*$VL~~###.dcl")) ; expect: T
(vl-filename-base 5)                  ; expect error: bad argument type: stringp 5
(vl-filename-extension)               ; expect error: too few arguments
(vl-filename-directory nil)           ; expect error: bad argument type: stringp nil
(vl-filename-mktemp 5)                ; expect error: bad argument type: stringp 5
