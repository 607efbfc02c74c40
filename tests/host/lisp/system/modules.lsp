(print (arx))                                  ; expect: nil
(print (arxload "nosuchmodule" "absent"))      ; expect: "absent"
(print (arxunload "nosuchmodule" 5))           ; expect: 5
(print (startapp "true"))                      ; expect: 33
(arxload "nosuchmodule")                       ; expect error: ARXLOAD failed: "nosuchmodule": there is no such file
(arxunload "nosuchmodule")                     ; expect error: ARXUNLOAD failed: "nosuchmodule": nosuchmodule is not loaded.
(arx 1)                                        ; expect error: too many arguments
(startapp 5)                                   ; expect error: bad argument type: stringp 5
