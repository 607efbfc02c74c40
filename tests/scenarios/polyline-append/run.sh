printf '2\n9.00,9.00,9.00\nEND\n' > dtm.lf
printf '2\n9.00,9.00,9.00\nEND' > open_end.lf
zentrik run -i add.answers draw.lsp add.lsp
