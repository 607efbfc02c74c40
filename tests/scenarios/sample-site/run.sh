# The sample site is what its program draws, and comes through a file unchanged.
zentrik run --no-module -o site.dxf "$SAMPLES/make_site.lsp"
cmp site.dxf "$SAMPLES/site.dxf" && echo "the site is what its program draws"
zentrik run --no-module -d site.dxf -o again.dxf
zentrik list site.dxf > site.list
zentrik list again.dxf > again.list
cmp site.list again.list && echo "the same objects again"
zentrik run --no-module -d site.dxf -o old.dxf --dxf-version R12
for type in LINE ARC TEXT INSERT ATTRIB; do
    echo "$type: $(zentrik list site.dxf --type $type | wc -l), in R12 $(zentrik list old.dxf --type $type | wc -l)"
done
