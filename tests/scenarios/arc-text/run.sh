# A street name in the bend of the road, then each side and turn on an arc.
texts() { zentrik list "$1" --type TEXT | tail -n "$2" | grep -o '(8 .*' | sed -E 's/\((11|210) [^)]*\) //g; s/\((100|41|51|71|72|73|410) [^)]*\) ?//g'; }
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i street.answers -o street.dxf -e '(c:arctext)'
texts street.dxf 18
for side in Inside Outside; do
    for clockwise in Yes No; do
        echo "-- $side, clockwise $clockwise"
        printf 'N ö\n3\n2\n%s\n%s\n#55 5216,10146\n\n' $side $clockwise |
            zentrik run -d site.dxf -o side.dxf --trace trace -e '(c:arctext)'
        grep acedCommand trace
        texts side.dxf 3
    done
done
echo "-- no arc"
printf 'OAK\n\n\n\n\n#55 5216,10146\nELM\n#48 5020,10080\n' | zentrik run -d site.dxf -o trees.dxf -e '(c:arctext)'
texts trees.dxf 3
