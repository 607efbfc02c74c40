# The axis of the sample site's street goes on beyond the boundary, by bearings and distances.
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i street.answers -o street.dxf -e '(c:pointer)'
zentrik list site.dxf --type LWPOLYLINE | wc -l
zentrik list street.dxf --type LWPOLYLINE | wc -l
zentrik list street.dxf --type LWPOLYLINE | tail -1 | grep -o '(8 .*' | sed 's/ (40 . 0.0) (41 . 0.0)//g'
