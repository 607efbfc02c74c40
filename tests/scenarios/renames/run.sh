# Records that get another name take those that use them along; U gives the old name back; a file keeps it.
zentrik run --no-module --output out.dxf renames.lsp
echo "status $?"
zentrik list out.dxf --type TEXT
zentrik list out.dxf --type INSERT
zentrik list out.dxf --type LAYER | tail -1
