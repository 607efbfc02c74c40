; Twice in each format, each time another polyline. No run asks whether to replace the file.
(repeat 6 (c:plwrite))
; To a file that isn't there, and to one whose last line has no end.
(c:plwrite)
(c:plwrite)
(princ)
