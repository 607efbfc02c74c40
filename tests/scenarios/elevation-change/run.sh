# A strip of the sample site is raised, scaled, and levelled; each break leaves every object either raised or not.
cp "$SAMPLES/site.dxf" .
change() { zentrik run -d site.dxf -e '(setvar "LUPREC" 2)' -e '(c:chgelev)' "$@" | sed 1d | tr '\r' '\n'; }
zentrik run -d site.dxf heights.lsp -e '(show)' | tee before
echo "-- raise"
change -i raise.answers -o raised.dxf
zentrik run -d raised.dxf heights.lsp -e '(show)' | tee raised
echo "-- raised and taken back"
change -i raise.answers -o back.dxf -e '(command "_.U")' >/dev/null
zentrik run -d back.dxf heights.lsp -e '(show)' | diff before - && echo "as before"
echo "-- again, with the standards of the time before"
change -i again.answers -o again.dxf -e '(c:chgelev)' -e '(c:chgelev)' -e '(c:chgelev)' -e 'zt:elevation'
zentrik run -d again.dxf heights.lsp -e '(show)' | diff before - | grep '>'
echo "-- scale"
change -i scale.answers -o scaled.dxf | tail -3
zentrik run -d scaled.dxf heights.lsp -e '(show)' | diff before - | grep '>'
echo "-- left"
change -i left.answers -e 'zt:elevation'
echo "-- breaks"
for n in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15; do
    change -i raise.answers --break-after $n -o broken.dxf | grep -c 'Tested'
    zentrik run -d broken.dxf heights.lsp -e '(show)' >broken
    echo "$n: $(grep -cvxFf before broken) raised, $(grep -vxFf before broken | grep -cvxFf raised) neither"
done
