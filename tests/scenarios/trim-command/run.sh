# Lines at the outlines of symbols as programs cut them, then a junction of roads as a user does.
shown() { zentrik list "$1" | grep '"Model"' | sed -E 's/.*"AcDbEntity"\) //; s/\((210|100|39|91) [^)]*\) ?//g; s/\(100 \. "[^"]*"\) ?//g'; }
zentrik run --no-module --output symbols.dxf symbols.lsp
echo "status $?"
shown symbols.dxf
zentrik run --no-module --drawing symbols.dxf --input roads.answers --output roads.dxf roads.lsp
echo "status $?"
shown roads.dxf
