zentrik run --no-module --output notes.dxf leaders.lsp
echo "status $?"
zentrik run --no-module --drawing notes.dxf --input answers.txt --output more.dxf again.lsp
echo "status $?"
zentrik list more.dxf | grep '"Model"' | sed 's/.*"AcDbEntity") //'
