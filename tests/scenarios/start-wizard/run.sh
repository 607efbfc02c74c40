mkdir -p drive/JOBS drive/USER
cp "$SAMPLES/site.dxf" drive/JOBS/SITE.dxf
echo old > drive/JOBS/OLD.DWG
printf 'a=1\r\nuse_startwiz=1\r\nb=2\r\n' > drive/USER/zentrik.ini
show='(list (getvar "DWGNAME") (getvar "DWGPREFIX"))'
values='(mapcar (quote eval) (quote (eorm$ is_metric sv:sm sv:ts sv:ps sv:sf sv:psf)))'
host='(mapcar (quote getvar) (quote ("DIMSCALE" "DIMTXT" "DIMASZ" "PDSIZE")))'
user='(setq usrdir$ "C:\\USER\\")'
here() { sed -e "s|$PWD|HERE|" -e 's|"[^"]*/zentproj.dcl"|"zentproj.dcl"|' -e 's|"AcadLocation" -> .*|"AcadLocation" -> WHERE|'; }
# What the module did from loading the dialog file on.
of_interest() { sed -n '/^ads_load_dialog/,$p' "$1" | grep -E "${2:-.}" | here; }
wizard() { # NAME ANSWERS EXPRESSION...
    echo "== $1"
    name=$1 answers=$2
    shift 2
    printf "$answers" | zentrik run --drive C=drive --registry recent.reg --trace "trace-$name" \
        -e "$user" -e '(c:wizard)' "$@" | here
}

wizard recent '?\nlister=1\nlister=2\nlister=0\n!select\n' -e "$show" -e use_startwiz
of_interest trace-recent '^(Reg|ads_|SendMessageA 1 74)'
wizard double-click 'lister=0\n!lister 4\n' -e "$show"
wizard nothing-chosen '!select\n!lister 4\n^C\n' -e "$show"
wizard open '!open\nC:\\JOBS\\site.dwg\n' -e "$show"
of_interest trace-open '^(acedGetFileD|SendMessageA 1 74)'
wizard open-cancelled '!open\n^C\n' -e "$show"
wizard open-none '!open\nC:\\JOBS\\NONE.DWG\n' -e "$show"
wizard skip 'skip_wiz=1\n!cancel\n' -e use_startwiz
od -c drive/USER/zentrik.ini | sed 's/^[^ ]* *//'
cat drive/USER/temp.ini
rm drive/USER/temp.ini

wizard new '!new\n?\n!select1\nC:\\JOBS\\NEW PLAN.DWG\nmetric=1\nhsc=500\ntxts=0.25\nsyms2=2\n!ok\n' \
    -e "$show" -e "$values" -e "$host" -e dwg_filenm -e use_startwiz
of_interest trace-new '^(ads_new|ads_set|ads_mode|ads_done|ads_start_d|acedPutSym|acedSetVar|acedGetFileD|SendMessageA 1 74)'
zentrik run --drive C=drive -d 'C:\JOBS\NEW PLAN.DWG' -e "$host" -e "$show"
wizard replaced '!new\n!ok\n!ok\n!select1\nC:\\JOBS\\OLD.DWG\nno\n^C\n!select1\nC:\\JOBS\\OLD.DWG\nyes\n!ok\n' -e "$show"
ls drive/JOBS | grep -i '\.d[wx]'
wizard new-cancelled '!new\nhsc=20\ntog2=1\n!cancel\n' -e "$show" -e "$values" -e "$host"
wizard scale-0 '!new\nhsc=0\nsyms2=5\ntxts2=5\n?\nhsc=12abc\ntxts=\n?\n^C\n' -e "$values"
wizard the-current "!new\n!select1\n$PWD/DRAWING1.DWG\n!ok\n!ok\n^C\n"
echo '== the second page first'
printf '?\nskip_wiz=1\n^C\n' | zentrik run --drive C=drive -e "$user" -e '(setq is_new 1)' -e '(c:wizard)' -e use_startwiz
echo '== a drawing with a name'
zentrik run --drive C=drive -d 'C:\JOBS\SITE.DWG' -e '(c:wizard)' < /dev/null
echo '== pictures for a program'
echo '^C' | zentrik run --drive C=drive --trace trace-preview preview.lsp
# Timers draw the tiles again; each picture counts once here.
grep -hE '^(acdbDisplayPreview|StretchBlt)' trace-preview trace-recent | sort -u
echo '== title'
zentrik run --trace trace-title -e '(setq crdfile "c:/jobs/lot 17.crd")' -e '(cf:zentutil "" 35)'
grep 'SetWindowTextA.*LOT' trace-title
zentrik run --trace trace-title -e '(cf:zentutil "" 35)'
grep -m 1 'SetWindowTextA.*CRD' trace-title
echo '== the page for users'
mkdir page && cd page
printf '!new\n!select1\nplan.dwg\nmetric=1\nhsc=500\ntxts=0.25\n!ok\n' > answers
zentrik run -i answers -e '(c:wizard)' -e '(mapcar (quote getvar) (list "DWGNAME" "DIMSCALE" "DIMTXT"))' -e sv:sf
cd ..
echo '== the end without a beginning'
zentrik run -e '(c:start_wiz)' -e '(setq dwg_filenm "")' -e '(c:start_wiz)' -e '(getvar "DWGTITLED")'
ls *.dxf 2>/dev/null || echo "no drawing was made"

echo '== when the module is loaded'
mkdir load && cd load
printf '!new\n!select1\nplan.dwg\n!ok\n' | zentrik run --trace trace -e '(setq use_startwiz 1)' \
    -e '(arxunload "zentutil.so")' -e '(arxload "zentutil.so")' -e '(getvar "DWGNAME")'
grep -E '^(acrxEntryPoint|SendMessageA 1 74|SetWindowTextA 1 "Auto)' trace
