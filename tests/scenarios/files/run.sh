mkdir -p drive/Jobs/SITE
printf 'unix\ndos\r\nold\rlast' > mixed.txt
zentrik run --drive C=drive --drive D=. paths.lsp
cat drive/Jobs/SITE/LIST.TXT drive/left.txt
zentrik run --drive C=drive --crlf -e '(setq f (open "C:\\crlf.txt" "w"))' -e '(write-line "x" f)' -e '(close f)'
od -c drive/crlf.txt
ls -A drive
