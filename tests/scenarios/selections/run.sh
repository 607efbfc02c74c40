zentrik run --input answers.txt selections.lsp
