# A quarter of the turning circle grows, is cut, and gets a neighbour.
arcs() { zentrik list "$1" --type ARC | grep -o '(8 .*' | sed -E 's/\((10|210) [^)]*\) //g; s/\(100 [^)]*\) //g'; }
cp "$SAMPLES/site.dxf" .
printf '#55 5210,10149\n\n4.5\n5200,10140\nU\n\n' | zentrik run -d site.dxf -o longer.dxf -e '(c:extendarc)'
arcs longer.dxf
for job in total cut neighbour; do
    echo "-- $job"
    zentrik run -d site.dxf -i $job.answers -o $job.dxf -e '(c:extendarc)'
    arcs $job.dxf
done
