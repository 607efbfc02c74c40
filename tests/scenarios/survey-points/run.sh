# A point file of a total station becomes blocks with attributes, which are then read again.
mkdir job
printf 'PNR  Y  X  H  CODE\r\n; second day\r\n101,5010.250,10020.500,101.375,GND\r\n102,5020.000,10025.125,101.900,TREE\r\n\r\n103;5030,10030\r\n104,5040.5,10040.75,,BORDER\r\n105,text,10050,1.0,GND\r\n' > job/points.csv
zentrik run --drive C=job --input answers.txt --output job/points.dxf ptimport.lsp
echo "status $?"
cat job/points.txt
zentrik list job/points.dxf --type ATTRIB | wc -l
