zentrik run --input answers.txt --trace trace job.lsp 2>messages
sed 's#/.*/##' messages
grep '^ads_\(set\|mode\|start_d\|done\|un\)' trace
