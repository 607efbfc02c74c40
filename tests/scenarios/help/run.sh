# Help for what is running: a function with a topic, one without, a host command, nothing; and without its files.
shown() { grep '^\[help\]\|^\[dialog\|^Command:'; }
cat > functions.lsp <<'END'
(defun c:pointer () (cf:zentutil usrdir$ 38) (princ))
(defun c:unlisted () (cf:zentutil usrdir$ 38) (princ))
END
echo "-- functions"
zentrik run functions.lsp -e '(c:pointer)' -e '(c:unlisted)' </dev/null | shown
echo "-- F1 in the dialog of a tool"
printf 'Zentrik\n@key F1\n^C\n' | zentrik run -e '(c:plwrite)' | shown
echo "-- nothing runs: the product's help, the host's, neither"
printf '!ok\n' | zentrik run -e '(cf:zentutil usrdir$ 38)' | shown
printf 'acad=1\n!ok\n' | zentrik run -e '(cf:zentutil usrdir$ 38)' | shown
printf '^C\n' | zentrik run -e '(cf:zentutil usrdir$ 38)' | shown
echo "-- the command"
printf '^C\n' | zentrik run -e '(command "ZTHELP")' | shown
printf '!ok\n' | zentrik run functions.lsp -e '(progn (command "ZTHELP") (princ))' | shown
echo "-- a topic by its address"
zentrik run -e '(cf:zentutil usrdir$ 44 (strcat psname "zentrik.chm::/arc-text.html"))' \
    -e '(cf:zentutil usrdir$ 44 (strcat psname "zentrik.chm::/../lisp/zentrik.lsp"))' </dev/null | shown
echo "-- without help.xrf"
mkdir empty
cp -r "$(dirname "$SAMPLES")" share
rm share/symbols/help.xrf
printf '!ok\n' | zentrik run --share share functions.lsp -e '(c:pointer)'
