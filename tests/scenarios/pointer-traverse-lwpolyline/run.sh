# A closed lot as one polyline: codes 1 to 9, deflections, an undone leg; it keeps its width and its height.
zentrik run -i traverse.answers -o lot.dxf draw.lsp -e '(c:pointer)'
zentrik list lot.dxf --type LWPOLYLINE | grep -o '(8 .*'
