;; write_site.lsp: a surveyor's job. Counts what the drawing holds, then has the module write
;; the polylines in its three text formats (the answers are in write_site.answers).
(defun count-of (type / set)
  (setq set (ssget "X" (list (cons 0 type))))
  (if set (sslength set) 0))

(foreach type '("LWPOLYLINE" "POLYLINE" "LINE" "ARC" "INSERT" "TEXT")
  (princ (strcat "\n" type ": " (itoa (count-of type)))))

(setq holes (cf:zentutil usrdir$ 20 "COREHOLE"))
(princ (strcat "\nCore holes: " (itoa (sslength holes))))
(cf:zentutil usrdir$ 21 holes)

(cf:zentutil usrdir$ 15 "" lspdir$)     ; lots with their curves, own format
(cf:zentutil usrdir$ 15 "" lspdir$)     ; the ditch, for a terrain model
(cf:zentutil usrdir$ 15 "" lspdir$)     ; everything, MicroStation
(princ)
