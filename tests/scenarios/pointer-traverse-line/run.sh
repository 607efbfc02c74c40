# A traverse by bearings and distances on a line: each turn makes a new line with the properties of the first.
zentrik run -i traverse.answers -o lots.dxf draw.lsp -e '(c:pointer)'
zentrik list lots.dxf --type LINE | grep -o '(8 .*'
