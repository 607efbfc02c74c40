zentrik run -i /dev/null --trace trace order.lsp \
    -e '(command "_.OPEN" "two")' \
    -e '(list mine (type c:plwrite) (getvar "DWGNAME"))' \
    -e '(progn (setq mine "of two") (command "_.CLOSE") (list mine (getvar "DWGNAME")))' \
    -e '(list mine (getvar "DWGNAME"))'
echo "status $?"
# what the module and the documents were told
sed -n -e 's/^acrxEntryPoint \([34]\).*/message \1/p' -e '/^documentBecameCurrent/p' trace
echo "---- changes that nobody wants to lose"
printf 'N\nY\n' | zentrik run -e '(command "_.OPEN" "one" "_.POINT" "1,1")' -e '(command "_.CLOSE" pause)' \
    -e '(getvar "DWGNAME")' -e '(command "_.CLOSE" pause)' -e '(getvar "DWGNAME")'
