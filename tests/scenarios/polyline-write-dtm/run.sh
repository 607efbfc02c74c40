zentrik run -i lines.answers draw.lsp -e '(c:plwrite)'
