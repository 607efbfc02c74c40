chmod +x tools/dos
export PATH="$PWD/tools:$PATH"
mkdir -p 'drive/My $(touch made) Job'
cat > 'drive/My $(touch made) Job/RUN.BAT' <<'EOF'
cd C:\JOB
EOF
echo "no program set:"
zentrik run --drive C=drive --registry none.reg batch.lsp 2>&1 | sed "s|$PWD|HERE|"
echo "the user's program:"
zentrik run --drive C=drive --registry dos.reg --trace trace.txt batch.lsp 2>&1 | sed "s|$PWD|HERE|"
grep -E '^(system|CreateProcessA)' trace.txt
echo "not waited for:"
zentrik run --drive C=drive --registry dos.reg -e '(startapp "C:\\My $(touch made) Job\\run.bat" "a b")' | sed "s|$PWD|HERE|" | sort
zentrik run --drive C=drive --registry none.reg -e '(startapp "C:\\NONE.BAT")' 2>&1
echo "refused:"
zentrik run --drive C=drive --registry dos.reg --no-shell batch.lsp 2>&1
ls
