echo 'kept as it was' > kept.lf
mkdir without
echo 'zt_other : dialog { : button { key = "ok"; label = "OK"; is_cancel = true; } }' > without/zentfile.dcl
zentrik run -i leave.answers draw.lsp leave.lsp
echo "status $?"
# The answers end at a prompt: that is a cancel, and the program says so.
printf 'Dtm\n!new\n' | zentrik run draw.lsp -e '(c:plwrite)'
echo "status $?"
ls
