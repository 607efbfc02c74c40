zentrik run -i read.answers read.lsp
