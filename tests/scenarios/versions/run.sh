# One drawing written in each version, and read back: what a version can't hold is told.
for version in R12 R2000 R2007; do
    zentrik run --no-module --dxf-version $version --output $version.dxf site.lsp
    echo "status $?"
    grep -A1 ACADVER $version.dxf > /dev/null && grep -A2 'ACADVER' $version.dxf | tail -1
    zentrik run --no-module --drawing $version.dxf show.lsp
    echo "status $?"
done
