# The names of two lots grow by half; labels of each kind and a note are doubled.
texts() { zentrik list "$1" | grep -E '"(M?TEXT|LINE)"\).*(8 \. "(LABELS|NOTES)"|LOT [1-4]")' | grep -o '(8 .*' | sed -E 's/\((210|100) [^)]*\) ?//g'; }
cp "$SAMPLES/site.dxf" .
zentrik run -d site.dxf -i lots.answers -o larger.dxf -e '(c:txtscale)'
texts larger.dxf
echo "-- every kind"
zentrik run -d site.dxf -i labels.answers -o labelled.dxf labels.lsp -e '(c:txtscale)' -e '(getvar "CMDECHO")' -e '(getvar "CLAYER")'
texts labelled.dxf
echo "-- from a program, which keeps its set"
zentrik run -d labelled.dxf -i /dev/null -o halved.dxf -e '(setvar "CMDECHO" 0)' -e '(setq s (ssget "X" (list (cons 8 "LABELS"))))' -e '(cf:txtenl 0.5 s)' -e '(sslength s)' -e '(cf:txtenl 0 s)'
echo "-- refusals"
zentrik run -d labelled.dxf -i /dev/null -e '(setq s (ssget "X" (list (cons 8 "LABELS"))))' -e '(setvar "CMDECHO" 0)' -e '(setvar "CLAYER" "0")' -e '(command "_.LAYER" "_F" "LABELS" "")' -e '(cf:txtenl 0.5 s)'
printf '^C\n2\n\n' | zentrik run -d site.dxf -e '(c:txtscale)' -e '(c:txtscale)'
printf '2\nall\n\n' | zentrik run -d site.dxf --break-after 3 -e '(c:txtscale)'
echo "-- taken back by one U"
zentrik run -d site.dxf -i labels.answers -o back.dxf labels.lsp -e '(c:txtscale)' -e '(command "_.U")'
texts back.dxf | grep -v LOT
