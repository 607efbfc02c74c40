# Layer tools with a dialog of the program's own, which it writes to a file first.
cp "$SAMPLES/site.dxf" .
zentrik run --drawing site.dxf --input answers.txt laytool.lsp
echo "status $?"
ls
