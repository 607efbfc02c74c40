(setq key "HKEY_CURRENT_USER\\Software\\ZentTest")
(print (vl-registry-read key "none"))          ; expect: nil
(print (vl-registry-write key "name" "value")) ; expect: "value"
(print (vl-registry-read key "name"))          ; expect: "value"
(print (vl-registry-write key "number" 258))   ; expect: 258
(print (vl-registry-read key "number"))        ; expect: 258
(vl-registry-write (strcat key "\\Sub") nil "default")
(print (vl-registry-read (strcat key "\\Sub"))) ; expect: "default"
(print (vl-registry-descendents key))          ; expect: ("Sub")
(print (vl-registry-descendents key t))        ; expect: ("name" "number")
(print (vl-registry-write "HKCU\\Software\\ZentTest" "name" "short")) ; expect: "short"
(print (vl-registry-read "HKCU\\Software\\ZentTest" "name")) ; expect: "short"
(print (vl-registry-read key "name"))          ; expect: "short"
(print (vl-registry-descendents "hkcu\\software\\zenttest")) ; expect: ("Sub")
(print (vl-registry-read "nonsense\\ZentTest" "name")) ; expect: nil
(print (vl-registry-write "nonsense\\ZentTest" "name" "x")) ; expect: nil
(print (vl-registry-descendents ""))           ; expect: nil
(vl-registry-read 5)                           ; expect error: bad argument type: stringp 5
(vl-registry-write key "a" 1.5)                ; expect error: bad argument type: stringp 1.5
(vl-registry-descendents)                      ; expect error: too few arguments
