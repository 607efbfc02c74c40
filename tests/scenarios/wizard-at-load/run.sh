# The wizard as a program has it that binds use_startwiz before it loads the module; then the list after its work.
mkdir -p drive/JOBS 'drive/JOBS/a $b %c;d' 'drive/JOBS/Straße ñ' 'drive/JOBS/with a blank'
for name in P1 P2 P3 P4 P5 P6 P7 P8 P9 'a $b %c;d/x %s $HOME;y' 'Straße ñ/Höhe é' '日本'; do
    cp "$SAMPLES/site.dxf" "drive/JOBS/$name.dxf"
done
here() { sed -e "s|$PWD|HERE|"; }
wizard() { # NAME REGISTRY ANSWERS EXPRESSION...
    echo "== $1"
    registry=$2 answers=$3
    shift 3
    printf '%b' "$answers" | zentrik run --drive C=drive --registry "$registry" --trace trace \
        -e '(setq use_startwiz 1 sv:sm 50.0 sv:ts 0.1 sv:ps 0.1)' -e '(arxunload "zentutil.so")' -e '(arxload "zentutil.so")' \
        -e '(strcat (getvar "DWGPREFIX") (getvar "DWGNAME"))' "$@" | here
}
shown() { sed -n '/(list_box)/,/Preview/p'; }

wizard cancelled recent.reg 'lister=0\n!cancel\n' -e use_startwiz
wizard 'twelve drawings, the last one' recent.reg '?\nlister=11\n!select\n'
# That opening made it the first.
wizard 'double clicks' recent.reg '!lister 4\nlister=0\n!lister 4\n' | tail -n 3
wizard open recent.reg '!open\nC:\\JOBS\\with a blank\\none.dwg\n'
wizard 'open by name' recent.reg '!open\nC:\\JOBS\\a $b %c;d\\x %s $HOME;y.dwg\n'
wizard 'open cancelled' recent.reg '!open\n^C\n'
grep -c 'SendMessageA 1 74' trace
for chosen in 3 5; do
    wizard "names that ask for care, line $chosen" recent.reg "lister=$chosen\n!select\n" | tail -n 2
done
echo "== help while a module is loaded is the host's, in a function of a program the wizard's own"
printf '!help\n^C\n' | zentrik run --registry none.reg --trace trace -e '(setq use_startwiz 1)' \
    -e '(arxunload "zentutil.so")' -e '(arxload "zentutil.so")' | grep '^\[\|^!\|^Command'
printf '!help\n!new\n!help\n^C\n' | zentrik run --registry none.reg -e '(c:wizard)' | grep '^\[\|^!\|^Start wizard'
wizard 'cancel of the second page keeps its values' new.reg '!new\nhsc=20\ntxts=0.3\n^C\n' \
    -e '(list sv:sm sv:ts sv:ps sv:sf sv:psf (getvar "DIMSCALE") (getvar "DIMTXT") dwg_filenm)'
grep -c 'SendMessageA 1 74' trace
ls drive/JOBS | wc -l
wizard 'a new drawing' new.reg '!new\n!select1\nC:\\JOBS\\Straße ñ\\n $1 %d;é.dwg\nmetric=1\nhsc=500\ntxts=0.25\nsyms=0.4\n!ok\n' \
    -e '(list usrdir$ tmpdir$ dwg_filenm (getvar "CMDECHO"))'
ls 'drive/JOBS/Straße ñ'
echo '-- opened anew'
zentrik run --drive C=drive --registry new.reg -e '(command "_.OPEN" "C:\\JOBS\\P1.DWG")' \
    -e '(command "_.OPEN" "C:\\JOBS\\Straße ñ\\n $1 %d;é.dwg")' \
    -e '(mapcar (quote getvar) (list "DWGNAME" "DIMSCALE" "DIMTXT" "DIMASZ" "PDSIZE"))'
wizard 'and listed' new.reg '?\n^C\n' | shown
wizard 'one that cannot be made' new.reg '!new\n!select1\nC:\\NONE\\x.dwg\n!ok\n' -e '(getvar "CMDECHO")'
wizard 'one that is there, named without its extension' new.reg '!new\n!select1\nC:\\JOBS\\P2\n!ok\nn\n' -e '(getvar "CMDECHO")'
echo "== nine are kept"
grep -c '^"File' recent.reg
