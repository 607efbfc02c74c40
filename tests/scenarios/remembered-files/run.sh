mkdir -p drive/JOB/user drive/PLN drive/OTHER drive/product
cp "$SAMPLES/site.dxf" drive/JOB/SITE.dxf
echo old > drive/PLN/LOTS.PLN
printf 'one\ntwo\nC:\n\\OLD\\\nfive\n' > drive/product/config.pik
zentrik run --drive C=drive --registry product.reg -d 'C:\JOB\SITE.DWG' -i answers.txt --trace trace files.lsp
grep '^acedGetFileD\|^MessageBoxA' trace
echo 'C:\PLN\NEW.PLN' | zentrik run --drive C=drive unnamed.lsp
printf 'C:\\PLN\\LOTS.PLN\n' | zentrik run --drive C=drive -d 'C:\JOB\SITE.DWG' -e '(cf:zentutil "C:\\JOB\\user\\" 48 "The answers end" "" "pln" 1)'
echo "status $?"
cd drive && ls -R
