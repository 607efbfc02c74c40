# The road's centre line ends at its manholes, a hedge at the trees in it; the symbols are there again.
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i answers -o trimmed.dxf shapes.lsp -e '(hedge)' -e '(c:trimsymbols)' -e '(show)'
echo "-- broken off at the third symbol"
zentrik run -d site.dxf --break-after 3 -i answers -o broken.dxf shapes.lsp -e '(hedge)' -e '(c:trimsymbols)' -e '(show)'
echo "-- nothing"
printf '\n' | zentrik run -d site.dxf shapes.lsp -e '(c:trimsymbols)' -e '(getvar "HIGHLIGHT")'
echo "-- taken back by one U"
zentrik run -d site.dxf -i answers shapes.lsp -e '(hedge)' -e '(c:trimsymbols)' -e '(command "_.U")' -e '(show)'
