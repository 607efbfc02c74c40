# The objects of a drawing, a group list a line.
zentrik run --no-module --dxf-version R2000 --output two.dxf -e '(entmake (quote ((0 . "LINE") (8 . "Gehölz") (10 0 0 0) (11 1 1 0))))' \
    -e '(entmake (quote ((0 . "TEXT") (10 0 0 0) (40 . 2.5) (1 . "Straße \"A\""))))' > /dev/null
zentrik list two.dxf
echo "status $?"
zentrik list two.dxf --type line
zentrik list two.dxf --type LAYER
zentrik list two.dxf --type CIRCLE
echo "status $?"
for type in LWPOLYLINE POLYLINE VERTEX INSERT ATTRIB TEXT MTEXT ARC APPID; do
    echo "$type $(zentrik list "$SAMPLES/site.dxf" --type $type | wc -l)"
done
zentrik list "$SAMPLES/site.dxf" --type INSERT | grep COREHOLE | head -1
