cp "$SAMPLES/../dialogs/zentfile.dcl" .
echo 'old text' > without_z.pln
zentrik run -i with_z.answers --trace trace draw.lsp -e '(cf:zentutil usrdir$ 15 "" "./")'
grep -v acdbEntMake trace > write.trace
zentrik run -i without_z.answers draw.lsp -e '(cf:zentutil usrdir$ 15 "" "./")'
