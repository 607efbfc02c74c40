# A view turned level with what is picked, in each unit of angles. The objects stay as they are, and the saved
# drawing opens in the same view.
zentrik run -o before.dxf draw.lsp
zentrik run -d before.dxf -i kerb.answers -e '(c:horizview)' -e '(angtos (getvar "VIEWTWIST") 0 4)'
zentrik run -d before.dxf -i answers.txt -o after.dxf --trace trace level.lsp
echo "status $?"
grep DVIEW trace
zentrik list before.dxf > before
zentrik list after.dxf > after
cmp before after && echo "Same objects."
zentrik run -d after.dxf -e '(rtos (* 180 (/ (getvar "VIEWTWIST") pi)) 2 6)'
