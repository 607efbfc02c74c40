# An old-style polyline with widths grows at its start and at its end.
zentrik run -i traverse.answers -o kerb.dxf draw.lsp -e '(c:pointer)'
zentrik list kerb.dxf | grep POLYLINE -A9 | grep -o '(0 . "[PVS][^)]*)\|(8 .*'
