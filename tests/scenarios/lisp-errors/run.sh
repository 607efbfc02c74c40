# What a program that goes wrong prints: the words, then the calls, each with its file and line.
zentrik run --no-module caught.lsp
echo "status $?"
for program in deep.lsp function.lsp syntax.lsp extra.lsp; do
    zentrik run --no-module "$program"
    echo "status $?"
done
# The break key.
timeout --preserve-status -s INT 2 zentrik run --no-module endless.lsp
echo "status $?"
