# Heads on objects that are there, by a user; arrows of each style, by a program.
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i add.answers shapes.lsp -o added.dxf -e '(c:addarrow)' -e '(show)' -e '(getvar "DIMASZ")'
echo "-- a program"
zentrik run -d site.dxf shapes.lsp program.lsp -o drawn.dxf -e '(show)'
zentrik list drawn.dxf --type ARC | tail -2 | sed 's/.*(100 . "AcDbCircle")//'
