cp "$SAMPLES/site.dxf" .
zentrik run --trace trace --drawing site.dxf --input answers.txt asks.lsp changes.lsp module.lsp > history
echo "status $?"
sed 's#"/[^"]*/dialogs/#"dialogs/#' trace
