cp "$SAMPLES/../dialogs/zentfile.dcl" .
echo 'old text' > without_z.pln
zentrik run -i with_z.answers --trace trace draw.lsp -e '(cf:zentutil usrdir$ 15 "" "./")'
# without the load and the unloading of the module
sed -e '1,/^acrxEntryPoint 3/d' -e '/^acrxUnlockApplication/,$d' -e /acdbEntMake/d trace > write.trace
zentrik run -i without_z.answers draw.lsp -e '(cf:zentutil usrdir$ 15 "" "./")'
