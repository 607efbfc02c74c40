# What a program has chosen with sssetfirst answers mode I, for LISP and for the module.
zentrik run --trace trace.txt \
    -e '(foreach x (list 1.0 2.0 3.0) (entmake (list (quote (0 . "LINE")) (cons 10 (list x 0.0 0.0)) (cons 11 (list x 5.0 0.0)))))' \
    -e '(entmake (list (quote (0 . "CIRCLE")) (quote (10 0.0 0.0 0.0)) (quote (40 . 1.0))))' \
    -e '(ssget "I")' \
    -e '(progn (sssetfirst nil (ssget "X")) (sslength (ssget "_I")))' \
    -e '(sslength (ssget "I" (list (cons 0 "LINE"))))' \
    -e '(progn (entdel (entlast)) (sslength (ssget "I")))' \
    -e '(progn (sssetfirst nil nil) (ssget "I"))'
grep -c 'acedSSGet "_\?I"' trace.txt
