# The help of the pointer tool, in the middle of the work.
printf '#last 9,0\n5\nHelp\n\nU\n\n' | zentrik run -o site.dxf draw.lsp -e '(c:pointer)'
zentrik list site.dxf --type LINE | grep -o '(10 .*'
