mkdir -p drive/JOB/user
cp "$SAMPLES/site.dxf" drive/JOB/SITE.dxf
printf 'PROJECT=C:\\OLD\\DITCH.PLN\r\nclfil=C:\\OLD\\OLD.CL\r\nkept=no\r\nPROJECT=C:\\OLD\\LOTS.PLN\r\n' > drive/JOB/SITE.ini
zentrik run --drive C=drive -d 'C:\JOB\SITE.DWG' save.lsp -o 'C:\JOB\SITE.DWG' --trace trace
grep -c '^acdbEntMake' trace
zentrik run --drive C=drive -d 'C:\JOB\SITE.DWG' block.lsp
zentrik run --drive C=drive unnamed.lsp
zentrik run --drive C=drive dots.lsp
cd drive/JOB && ls -R
