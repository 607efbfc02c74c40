cp "$SAMPLES/site.dxf" .
zentrik run --drawing site.dxf --input answers.txt undo.lsp
echo "status $?"
