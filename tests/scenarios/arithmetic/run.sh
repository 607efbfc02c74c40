zentrik run -e '(+ 1 2)' -e '(strcat "a" "b")' -e "(list 1 2.5 'x)"
