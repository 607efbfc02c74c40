# The job that the demo runs.
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i "$SAMPLES/write_site.answers" "$SAMPLES/write_site.lsp"
zentrik run -i "$SAMPLES/read_site.answers" -o result.dxf "$SAMPLES/read_site.lsp"
zentrik list result.dxf --type LWPOLYLINE | wc -l
zentrik list result.dxf --type POLYLINE | wc -l
cmp site.dxf "$SAMPLES/site.dxf" && echo "the site is as it was"
