# Questions of a program about the sample site's polylines, and what it drags, turns and selects.
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i answers -o changed.dxf program.lsp
zentrik list changed.dxf --type INSERT | grep -o '(8 . "SYMBOLS").*SPTTREE.*(50 [^)]*)' | sed 's/(100.*(10/(10/; s/(41.*(50/(50/'
