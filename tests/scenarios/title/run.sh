# The title shows the coordinate file of the drawing in front.
mkdir -p drive/JOBS
cp "$SAMPLES/site.dxf" drive/JOBS/ONE.dxf
cp "$SAMPLES/site.dxf" drive/JOBS/TWO.dxf
zentrik run --drive C=drive --registry none.reg --trace trace -e '(setq crdfile "c:\\jobs\\first.crd")' \
    -e '(command "_.OPEN" "C:\\JOBS\\ONE.DWG")' -e crdfile -e '(setq crdfile "C:/JOBS/Lot 17.crd.bak")' \
    -e '(command "_.QSAVE")' -e '(command "_.SAVEAS" "" "C:\\JOBS\\COPY.DWG")' \
    -e '(command "_.NEW" "")' -e crdfile -e '(setq crdfile "x\\third.CRD")' -e '(command "_.LINE" "0,0" "1,1" "")' \
    -e '(command "_.SAVE" "C:\\JOBS\\SAVED.DWG")' \
    -e '(progn (setq opendwgname "C:\\JOBS\\TWO.DWG") (command "ZTOPEN"))' -e crdfile \
    -e '(command "_.CLOSE")' -e '(list (getvar "DWGNAME") crdfile)' \
    -e '(command "_.OPEN" "C:\\JOBS\\ONE.DWG")' -e '(list (getvar "DWGNAME") crdfile)' < /dev/null |
    sed -e "s|$PWD|HERE|"
# Opening and making one sets it twice: for the drawing that comes to the front, and when the command has ended.
grep -E '^(documentBecameCurrent|SetWindowTextA 1 "AutoCAD)' trace
