# Cancel at each prompt of the pointer tool: what has been drawn stays, no arrow is left, variables are put back.
for job in pick distance bearing total edge align help; do
    echo "-- $job"
    zentrik run -i $job.answers --trace trace -o $job.dxf draw.lsp -e '(c:pointer)' -e '(kept)'
    zentrik list $job.dxf --type LWPOLYLINE | grep -o '(10 .*'
    # a vector in the complement colour wipes itself
    grep '^acedGrDraw' trace | sort | uniq -c | awk '$1 % 2 { print "left on the screen:", $0 }'
done
