zentrik run --no-module programs.lsp
echo "status $?"
zentrik run --no-module -i answers by-hand.lsp
echo "status $?"
