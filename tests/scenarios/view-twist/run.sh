zentrik run --input answers.txt twist.lsp -o twisted.dxf
echo "status $?"
grep -A1 '^ 51$' twisted.dxf | sed -n 2p
zentrik run --drawing twisted.dxf --no-module -e '(angtos (getvar "VIEWTWIST") 0 4)' -e '(getvar "VIEWCTR")'
