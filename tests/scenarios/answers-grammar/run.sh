zentrik run --input answers.txt questions.lsp
