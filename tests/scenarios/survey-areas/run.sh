# A table of the areas of closed polylines, arcs too, and the drawing as it was after one U.
cp "$SAMPLES/site.dxf" .
zentrik run --drawing site.dxf --input answers.txt areas.lsp
echo "status $?"
