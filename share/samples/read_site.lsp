;; read_site.lsp: reads the three files of write_site.lsp into an empty drawing.
(cf:zentutil usrdir$ 27 "" lspdir$)
(cf:zentutil usrdir$ 27 "" lspdir$)
(cf:zentutil usrdir$ 27 "" lspdir$)
(setq all (ssget "X" '((-4 . "<OR") (0 . "LWPOLYLINE") (0 . "POLYLINE") (-4 . "OR>"))))
(princ (strcat "\nPolylines read: " (itoa (sslength all))))
(princ)
