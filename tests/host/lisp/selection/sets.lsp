(setq a (entmakex '((0 . "LINE") (8 . "A") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
      b (entmakex '((0 . "CIRCLE") (8 . "B") (10 50.0 50.0 0.0) (40 . 2.0)))
      c (entmakex '((0 . "LINE") (8 . "C") (10 0.0 5.0 0.0) (11 10.0 5.0 0.0))))
(setq s (ssget "_X"))
(print (sslength s))                           ; expect: 3
(print (eq (ssname s 0) c))                    ; expect: T
(print (ssname s 3))                           ; expect: nil
(print (eq (ssname s 2.0) a))                  ; expect: T
(print (sslength (ssget "X" '((0 . "LINE")))))  ; expect: 2
(print (ssget "X" '((0 . "ARC"))))             ; expect: nil
(print (sslength (ssget "_X" '((-4 . "<OR") (8 . "A") (8 . "B") (-4 . "OR>"))))) ; expect: 2
(print (sslength (ssget "C" '(-1 -1) '(11 1)))) ; expect: 1
(print (sslength (ssget "_W" '(-1 -1) '(11 11) '((0 . "L*"))))) ; expect: 2
(print (sslength (ssget "_CP" '((-1 -1) (11 -1) (11 1) (-1 1))))) ; expect: 1
(print (sslength (ssget "F" '((5 -1) (5 6)) '((8 . "A"))))) ; expect: 1
(print (eq (ssname (ssget '(5 0)) 0) a))       ; expect: T
(setq t2 (ssadd))
(print (sslength t2))                          ; expect: 0
(print (eq (ssadd a t2) t2))                   ; expect: T
(ssadd b t2)
(ssadd b t2)
(print (sslength t2))                          ; expect: 2
(print (eq (ssmemb a t2) a))                   ; expect: T
(print (ssmemb c t2))                          ; expect: nil
(print (eq (ssdel a t2) t2))                   ; expect: T
(print (ssdel a t2))                           ; expect: nil
(print (sslength t2))                          ; expect: 1
(print (sslength (ssadd c)))                   ; expect: 1
(print (mapcar 'car (ssnamex s)))              ; expect: (0 0 0)
(print (length (ssnamex s 1)))                 ; expect: 1
(sssetfirst nil s)
(print (eq (cadr (ssgetfirst)) s))             ; expect: T
(print (sslength (ssget "_I")))                ; expect: 3
(print (sslength (ssget "_I" '((0 . "CIRCLE"))))) ; expect: 1
(sssetfirst nil nil)
(print (ssgetfirst))                           ; expect: (nil nil)
(ssget 5)                                      ; expect error: bad argument type: listp 5
(ssget "X" '((8 . 5)))                         ; expect error: bad DXF group: (8 . 5)
(sslength nil)                                 ; expect error: bad argument type: lselsetp nil
(ssname s "0")                                 ; expect error: bad argument type: numberp: "0"
(ssname nil 0)                                 ; expect error: bad argument type: lselsetp nil
(ssadd 5)                                      ; expect error: bad argument type: lentityp 5
(ssdel a)                                      ; expect error: too few arguments
(ssmemb a 5)                                   ; expect error: bad argument type: lselsetp 5
(ssnamex 5)                                    ; expect error: bad argument type: lselsetp 5
(sssetfirst 1)                                 ; expect error: bad argument type: lselsetp 1
(ssgetfirst 1)                                 ; expect error: too many arguments
