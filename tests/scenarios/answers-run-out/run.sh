cp "$SAMPLES/site.dxf" .
try()
{
    zentrik run --trace trace "$@"
    echo "status $?"
    # without the load and the unloading of the module
    sed -e '1,/^acrxEntryPoint 3/d' -e '/^acrxUnlockApplication/,$d' trace
}
try --input /dev/null -e '(getpoint "\nStart: ")' -e '(print "never")'
printf '1\n' | try -e '(setq n (getint "\nCount: "))' -e '(getstring "Name: ")'
echo "---- a set of objects, a dialog, a command, the module"
try --input /dev/null -e '(ssget)'
try --input /dev/null dialog.lsp
try --input /dev/null -e '(command "_.LINE" "0,0" pause)'
try --input /dev/null --drawing site.dxf -e '(cf:zentutil usrdir$ 15 tmpdir$ lspdir$)'
echo "---- no *error* and no catch goes on asking"
try --input /dev/null -e "(while (vl-catch-all-error-p (vl-catch-all-apply 'getint '(\"\\nCount: \"))))"
echo "---- the drawing is not saved"
zentrik run --input /dev/null --output out.dxf -e '(getpoint "\nStart: ")'
echo "status $?"
ls
