# Programs that are started and waited for, documents, the coordinate program, and all of it refused.
place="$PWD"
plain() { sed "s#$place#PLACE#g"; }
cat > show.sh <<'END'
#!/bin/sh
sleep 0.3
for word; do echo "[$word]"; done | tee -a seen
END
cat > batch.sh <<'END'
#!/bin/sh
echo "batch:"
cat "$1"
END
chmod +x show.sh batch.sh
cat > programs.reg <<END
Windows Registry Editor Version 5.00

[HKEY_CLASSES_ROOT\.pdf]
@="Reader.Document"

[HKEY_CLASSES_ROOT\Reader.Document\shell\open\command]
@="$place/show.sh /n \"%1\""

[HKEY_CLASSES_ROOT\.bat]
@="batfile"

[HKEY_CLASSES_ROOT\batfile\shell\open\command]
@="$place/batch.sh \"%1\""
END
echo "-- waited for, its words as they were given"
zentrik run --registry programs.reg -e '(progn (cf:zentutil usrdir$ 47 "./show.sh \"two words\" c;d $(e) %HOME \"\" caf\351")
    (princ "it has ended\n") (princ))' -e '(cf:zentutil usrdir$ 47 "nothing-of-this-name")' </dev/null
echo "-- a document"
rm seen
echo x > 'the plan.pdf'
zentrik run --registry programs.reg -e '(cf:zentutil usrdir$ 36 "the plan.pdf")' </dev/null >/dev/null
for i in 1 2 3 4 5 6 7 8 9 10; do [ "$(grep -c . seen 2>/dev/null)" = 2 ] || sleep 0.3; done
plain < seen
echo "-- the coordinate program"
mkdir 'my jobs' cogo
launch='(progn (cf:zentutil "my jobs/" 22 "cogo/" "D:\\JOBS\\SITE1.CRD" "seven") (princ))'
zentrik run --registry programs.reg -e "$launch" </dev/null
echo MZ > cogo/ZENT11.EXE
zentrik run --registry programs.reg -e "$launch" </dev/null | plain
head -n 8 'my jobs/config.pik'
tail -n 6 'my jobs/config.pik'
zentrik run --registry programs.reg -e '(progn (cf:zentutil "my jobs/" 22 "cogo/" "NINECHARS.CRD" "") (princ))' </dev/null
echo "-- refused"
zentrik run --registry programs.reg --no-shell -e "$launch" -e '(cf:zentutil usrdir$ 19 "ls")' \
    -e '(cf:zentutil usrdir$ 36 "the plan.pdf")' -e '(cf:zentutil usrdir$ 44 "other.chm")' \
    -e '(cf:zentutil usrdir$ 47 "ls")' </dev/null 2>&1 | plain
echo "-- with and without a name"
for name in '' ' "./show.sh"'; do
    zentrik run --registry programs.reg --trace trace.txt -e "(progn (cf:zentutil usrdir\$ 36$name) (cf:zentutil usrdir\$ 44$name)
        (cf:zentutil usrdir\$ 47$name) (princ))" </dev/null >/dev/null
    echo "calls:$(grep -E '^(CreateProcessA|HtmlHelpA)' trace.txt | plain | sed 's/^/ /' | tr '\n' ';')"
done
