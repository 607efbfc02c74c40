try() { echo "\$ zentrik $*"; zentrik "$@"; echo "status $?"; }
try run --no-module -e '(+ 1 2)'
try run --no-module -e '(+ 1 "2")' -e '(print "never")'
try run --no-module -e '(vl-catch-all-error-message (vl-catch-all-apply (quote /) (list 1 0)))'
try run --no-module -e '(defun *error* (m) (princ m))' -e '(car 1)'
try run --no-module -e '(exit)' -e '(print "never")'
try run --no-module none.lsp
try run --no-module --drawing none.dxf
try run --no-module --input none.txt
try run --no-module --output none/out.dxf -e '(print "done")'
try run --no-module --trace none/trace -e 1
try run --bad-option
try run --clock 2026 -e 1
try run --break-after many
try run --dxf-version R9
try run --drive CC
try run --drive 1=x
try run --no-module -e 1 site.DXF
try frobnicate
try
try list
try list none.dxf
try --version
zentrik --help > help && zentrik run --help > run-help; echo "status $?"
for command in $(sed -n 's/^(defun c:\([a-z_]*\).*/\1/p' "$SAMPLES/../lisp/zentrik.lsp"); do
    grep -qw "$command" run-help || echo "the help lacks $command"
done
try run --no-module --input /dev/null -e '(getint)'
