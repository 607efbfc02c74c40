cp "$SAMPLES/site.dxf" .
zentrik run --drawing site.dxf --input answers.txt module.lsp -e '(print "the run goes on")' \
    lisp.lsp -e '(print "never printed")'
echo "status $?"
printf '0,0\n^C\n' | zentrik run command.lsp
echo "status $?"
