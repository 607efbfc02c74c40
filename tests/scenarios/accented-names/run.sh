# Files whose names have letters beyond ASCII: told as they are named, and opened by the wizard from its list.
zentrik list café.dxf
zentrik run --drawing café.dxf -e 1
zentrik run café.lsp
zentrik run --output none/café.dxf -e 1
zentrik run -e '(command "_.OPEN" "café")' -e '(command "_.SAVEAS" "" "none/café")' -e '(load "café")' | sed "s|$PWD|HERE|"
echo '(car "a")' > é.lsp
zentrik run é.lsp
echo "---- a name that has no place in the character set of programs"
cp "$SAMPLES/site.dxf" 测量.dxf
zentrik run -e '(command "_.OPEN" "测量")' > /dev/null
printf 'lister=0\n!select\n' | zentrik run -e '(c:wizard)' -e '(getvar "DWGNAME")' -e '(list usrdir$ (findfile "测量.dxf"))' | sed "s|$PWD|HERE|g"
zentrik run -e '(command "_.OPEN" "测量")' -e '(command "_.QSAVE")' -e '(getvar "DWGNAME")' > /dev/null
ls *测量*
