# A ramp: each leg goes on with the slope of the one before.
zentrik run -i traverse.answers -o ramp.dxf draw.lsp -e '(c:pointer)'
zentrik list ramp.dxf --type VERTEX | grep -o '(10 [^)]*)'
