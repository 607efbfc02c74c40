# Steps run in their order; a fixed clock; breaks; line ends; other programs; text in and out.
zentrik run --no-module -e '(setq a 1)' count.lsp -e '(setq a (1+ a))' count.lsp -e '(list a (quote (b . c)) "t\n" nil 1.0)'
zentrik run --no-module --clock 20010203.040506 -e '(rtos (getvar "CDATE") 2 6)' -e '(rtos (getvar "DATE") 2 8)'
echo "-- breaks are counted by the module's polls"
zentrik run --break-after 1 -e '(print "lisp alone polls nothing")' 
echo "status $?"
zentrik run --no-module -e '(cf:zentutil "" 14)'
echo "status $?"
zentrik run --no-module -e '(null c:plwrite)'
zentrik run -e '(null c:plwrite)' -e '(null lspdir$)'
echo "-- line ends of files"
zentrik run --crlf --no-module --output crlf.dxf -e '(progn (setq f (open "a.txt" "w")) (write-line "one" f) (princ "two\n" f) (close f))'
od -c a.txt
head -2 crlf.dxf | od -c
echo "-- other programs"
zentrik run --no-shell -e '(cf:zentutil usrdir$ 19 "touch made")' -e '(startapp "touch" "made")'
echo "status $?"
ls
echo "-- text that has no place"
printf 'жил\nŽilina € ß\n' | zentrik run --no-module -e '(strlen (setq name (getstring T "\nName: ")))' -e 'name' -e '(ascii "€")' -e '(strcase "ß ž é")'
echo "-- standard input answers, an empty run"
printf '5\n' | zentrik run --no-module -e '(* 2 (getint "\nCount: "))'
zentrik run --no-module
echo "status $?"
echo "-- drawings of the options aren't noted as recent, those of commands are"
zentrik run --no-module --registry recent.reg --drawing crlf.dxf --output other.dxf -e 1
[ -e recent.reg ] || echo "nothing is noted"
zentrik run --no-module --registry recent.reg -e '(command "OPEN" "other")'
grep -c '^"File' recent.reg
