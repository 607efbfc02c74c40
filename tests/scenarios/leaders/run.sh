# Leaders that are bent, undone and repeated, a zorro, and one that is left half-way.
cp "$SAMPLES/site.dxf" .
for job in leader zorro left; do
    echo "-- $job"
    zentrik run -d site.dxf -i $job.answers shapes.lsp -o $job.dxf -e '(c:curveleader)' -e '(show)' -e '(getvar "DIMASZ")'
done
zentrik list leader.dxf --type SOLID | sed 's/.*(100 . "AcDbTrace")//'
