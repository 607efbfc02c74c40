# A damaged drawing is refused with its file and line, and what it should have been saved over stays.
cp "$SAMPLES/site.dxf" .
try()
{
    echo "as it was" > kept.dxf
    for means in "run --no-module --output kept.dxf -e (print\"never\") --drawing" list; do
        zentrik $means "$1"
        echo "status $?"
    done
    [ "$(cat kept.dxf)" = "as it was" ] || echo "kept.dxf was touched"
}
head -n 200 site.dxf > short.dxf; try short.dxf
sed '101s/.*/no code/' site.dxf > code.dxf; try code.dxf
: > empty.dxf; try empty.dxf
printf '  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n1.5.2\n  0\nENDSEC\n  0\nEOF\n' > number.dxf; try number.dxf
printf '  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  5\nXYZ\n 10\n0\n  0\nENDSEC\n  0\nEOF\n' > handle.dxf; try handle.dxf
printf '  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n0.0\n' > open.dxf; try open.dxf
printf 'AutoCAD Binary DXF\r\n\032\000\000\000SECTION\000\002\000ENTI' > binary.dxf; try binary.dxf
printf 'a text that is no drawing\n' > text.dxf; try text.dxf
mkdir folder.dxf; try folder.dxf
ls kept*
# One that a program opens: the drawing at hand stays, and the run says at its end that a file failed.
zentrik run --no-module --drawing site.dxf -e '(command "_.OPEN" "short.dxf")' -e '(getvar "DWGNAME")'
echo "status $?"
