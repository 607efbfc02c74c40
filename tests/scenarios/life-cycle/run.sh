# A session over two drawings: what the module does at each load, save, unload and change of drawing.
cp "$SAMPLES/site.dxf" one.dxf
cp "$SAMPLES/site.dxf" two.dxf
printf 'no\nno\nno\nno\n' > answers # drop the changes
zentrik run --trace trace -d one.dxf \
    -e '(setq crdfile "C:/JOB/SOUTH.CRD" ocptnm "101" bsptnm "102")' \
    -e '(command "_.QSAVE")' \
    -e '(command "_.ZTOPEN")' \
    -e '(setq opendwgname "two.dxf")' \
    -e '(command "_.ZTOPEN")' \
    -e '(list (getvar "DWGNAME") crdfile (getvar "LISPINIT"))' \
    -e '(setq crdfile "C:/JOB/NORTH.CRD" data2dwg 1 tmpdir$ "elsewhere")' \
    -e '(command "_.QSAVE")' \
    -e '(= tmpdir$ (getvar "DWGPREFIX"))' \
    -e '(cf:zentutil "" 46 "on" 2 (list 640000.0 5120000.0 0.0))' \
    -e '(arxunload "zentutil")' \
    -e '(type cf:zentutil)' \
    -e '(command "_.QSAVE")' \
    -e '(arxload "zentutil")' \
    -e '(cf:zentutil "" 51 " A ")' \
    -e '(command "_.QSAVE")' \
    -e '(command "_.ZTCLOSE")' \
    -e '(list (getvar "DWGNAME") (getvar "DWGTITLED"))' -i answers > history
echo "status $?"
sed "s#$PWD#.#" history
echo "--- settings"
grep crdfile ./*.ini
echo "--- what the module did"
grep -E '^ *(acrxEntryPoint|acrxUnlock|registerApp|Ac[A-Z][A-Za-z]*::|Afx|~?CDynLink|SetWindows|Unhook|addCommand|removeGroup|Create|DestroyW|SetWindowText|appContext|closeDocument|acdbEntMake .*"BLOCK")' trace
echo "--- closing when nothing has changed"
zentrik run --trace trace --registry none.reg -d one.dxf -e '(setq opendwgname "two.dxf")' \
    -e '(command "_.ZTOPEN")' -e '(command "_.ZTCLOSE")' </dev/null
grep closeDocument trace
echo "--- help in a running function, by F1"
printf '@key F1\nanswer\n' > answers
zentrik run -i answers -e '(defun c:topic () (getstring "Name: "))' -e '(c:topic)' | grep -E '^(Name|\[help|")'
echo "--- closing with changes in one of two: the other one's, the front one's, and the answer cancel"
set_up='(setq opendwgname "two.dxf")'
draw='(command "_.POINT" "1,1")'
closing() { zentrik run --trace trace --registry none.reg -d one.dxf -e "$set_up" "$@" -e '(getvar "DWGNAME")' |
    sed -n "s#$PWD#.#; /message/p; \$p"; grep closeDocument trace; }
printf 'no\n' > answers
closing -i answers -e "$draw" -e '(command "_.ZTOPEN")' -e '(command "_.ZTCLOSE")'
closing -i answers -e '(command "_.ZTOPEN")' -e "$draw" -e '(command "_.ZTCLOSE")'
printf 'cancel\ncancel\n' > answers
closing -i answers -e "$draw" -e '(command "_.ZTOPEN")' -e '(command "_.ZTCLOSE")'
closing -i answers -e '(command "_.ZTOPEN")' -e "$draw" -e '(command "_.ZTCLOSE")'
echo "--- a mark on the screen: the pixels set at each paint, what is painted anew without it"
zentrik run --trace trace --registry none.reg -d one.dxf -e '(cf:zentutil "" 46 "on" 1 (list 1.0 2.0 0.0))' \
    -e '(command "_.REGEN")' -e '(cf:zentutil "" 46 "off" -1)' -e '(command "_.REGEN")' </dev/null >history
grep -E '^(ReleaseDC|InvalidateRect|acedCmd)' trace
echo "--- help in a dialog of a running function, by F1"
printf '@key F1\ncount=5\n!accept\n' > answers
zentrik run -i answers ask.lsp -e '(c:pointer)' | grep -E '^(\[|@key|count=|!accept|\(1 )'
