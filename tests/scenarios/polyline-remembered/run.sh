mkdir job other elsewhere
zentrik run -o site.dxf draw.lsp
zentrik run -d site.dxf -i pick.answers --trace trace pick.lsp > history
grep acedGetFileD trace
cat site.ini
