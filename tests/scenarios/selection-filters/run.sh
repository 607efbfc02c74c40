cp "$SAMPLES/site.dxf" .
zentrik run --no-module --drawing site.dxf filters.lsp
echo "status $?"
