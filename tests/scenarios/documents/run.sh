chmod +x tools/*
export PATH="$PWD/tools:$PATH"
mkdir -p drive/JOB && touch 'drive/JOB/A $(touch made) B.pdf'
zentrik run --drive C=drive --registry none.reg --trace trace.txt documents.lsp
wait_for() { for try in 1 2 3 4 5 6 7 8 9 10; do [ -e "$1" ] && return; sleep 0.2; done; }
wait_for opened
sed "s|$PWD|HERE|" opened
cat waited
grep CreateProcessA trace.txt
ls
