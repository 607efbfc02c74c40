zentrik run --input answers.txt --trace trace job.lsp
grep '^ads_\(set\|mode\|start_d\|done\|un\)' trace
