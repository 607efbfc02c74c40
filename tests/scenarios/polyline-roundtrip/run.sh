# Objects without their names and handles.
objects() { zentrik list "$1" | sed -E 's/\((-1|-2|330) \. <Entity name: [^>]*>\) ?//g; s/\(5 \. "[0-9A-F]+"\) //'; }
write() { rm -f own.pln dtm.lf plain.txt; zentrik run "$@" -i write.answers -e '(repeat 3 (c:plwrite))'; }

write draw.lsp
mkdir first && cp own.pln dtm.lf plain.txt first
for name in own dtm plain; do
  zentrik run -i read_$name.answers -o $name.dxf -e '(c:plread)'
  echo "-- $name.dxf"
  objects $name.dxf
done

# What was read runs backwards; written and read once more it runs as at first, and so does the file, but
# for a blank in its MicroStation form: the closed polyline is now an open one.
for file in own.pln dtm.lf plain.txt; do
  name=${file%.*}
  write -d $name.dxf >> history
  zentrik run -i read_$name.answers -o twice.dxf -e '(c:plread)' >> history
  write -d twice.dxf >> history
  echo "-- $file, twice"
  diff first/$file $file
done
true
