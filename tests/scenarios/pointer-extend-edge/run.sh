# Lines run to boundaries of each kind; what can't be reached ends the tool.
for job in polyline undone closed old refused nothing beside; do
    echo "-- $job"
    zentrik run -i $job.answers -o $job.dxf draw.lsp -e '(c:pointer)'
    zentrik list $job.dxf --type LINE | grep -o '(10 [^)]*) (11 [^)]*)'
done
