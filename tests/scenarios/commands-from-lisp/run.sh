cp "$SAMPLES/site.dxf" .
mkdir jobs
zentrik run --drive C=jobs --drawing site.dxf documents.lsp
echo "status $?"
ls jobs
zentrik run --no-module edit.lsp
echo "status $?"
