zentrik run -i /dev/null --trace trace \
    -e '(arx)' \
    -e '(arxload "zentutil" "there already")' \
    -e '(command "_.NEW" ".")' \
    -e '(arxunload "zentutil")' \
    -e '(list (arx) (type cf:zentutil))' \
    -e '(arxunload "zentutil.so" "gone")' \
    -e '(arxload "C:\\NOWHERE\\zentutil")' \
    ; echo "status $?"
zentrik run -i /dev/null --trace trace \
    -e '(arxunload "zentutil.arx")' \
    -e '(command "_.NEW" ".")' \
    -e '(arxload "zentutil")' \
    -e '(arx)' \
    -e '(cf:zentutil "" 51 " A ")' \
    -e '(command "_.CLOSE")' \
    -e '(cf:zentutil "" 51 " B ")'
echo "status $?"
sed -n 's/^acrxEntryPoint \([0-9]*\).*/message \1/p' trace
