# Drawings named as on the platform that programs were written for.
mkdir -p jobs/Site
show='(mapcar (quote getvar) (quote ("DWGNAME" "DWGPREFIX" "DWGTITLED" "DBMOD")))'
line='(entmake (quote ((0 . "LINE") (10 0 0 0) (11 1 1 0))))'
run()
{
    zentrik run --no-module "$@" > printed
    result=$?
    sed "s#$PWD#HERE#" printed
    echo "status $result"
}

echo "-- a new drawing"
run -e "$show" -e "$line" -e "$show" --output jobs/Site/PLAN.DWG
ls jobs/Site
echo "-- opened by all forms of its name"
for form in jobs/Site/PLAN.DWG jobs/Site/plan.dxf 'jobs\site\Plan.dwg' 'C:\SITE\PLAN.DWG' 'c:/site/plan.dwg' 'C:\Site\Plan'
do
    run --drive C=jobs --drawing "$form" -e "$show"
done
echo "-- saved over: the drawing before stays as it was"
run --drive C=jobs --drawing 'C:\SITE\PLAN.DWG' -e "$line" -e '(command "_.QSAVE")' -e "$show"
ls jobs/Site
for f in jobs/Site/PLAN.dxf jobs/Site/PLAN.bak; do zentrik list "$f" --type LINE | wc -l; done
zentrik list 'jobs\site\plan.dwg' --type line | wc -l
echo "-- saved by --output under a name with a drive"
run --drive D=jobs --drawing jobs/Site/PLAN.DWG --output 'D:\SITE\COPY.DWG' -e "$show"
ls jobs/Site
echo "-- a DWG file itself is no DXF"
printf 'AC1015\0\0\0binary' > jobs/real.dwg
run --drawing jobs/real.dwg -e '(print "never")'
echo "-- no such drawing, no such drive"
run --drawing 'C:\NONE.DWG' --drive C=jobs
run --drive C -e 1
echo "-- drives that have no directory are the root"
run --drawing "Z:$(pwd | tr / '\\')\\jobs\\site\\plan.dwg" -e '(getvar "DWGNAME")'
run --drawing "E:$PWD/jobs/site/plan.dwg" -e '(getvar "DWGNAME")'
