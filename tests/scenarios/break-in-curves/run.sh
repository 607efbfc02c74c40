# A break is asked for once a curve: the curve before it stays.
for n in 1 2 3; do
    zentrik run --break-after $n --input answers.txt --output broken.dxf -e '(c:curveleader)'
    echo "status $?"
    zentrik list broken.dxf | grep -o '"LWPOLYLINE"\|(90 . [0-9]*)\|"SOLID"'
done
