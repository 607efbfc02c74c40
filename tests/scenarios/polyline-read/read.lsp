(load "show.lsp")
; Lines at and past the longest that is read whole: 112 characters with the line end.
(defun filled (line size)
  (while (< (strlen line) size) (setq line (strcat line "x")))
  line)
(setq f (open "long.lf" "w"))
(write-line "2" f)
(write-line (filled "1,2,3," 111) f)
(write-line (filled "4,5,6," 112) f)     ; its line end is left over, which makes a header
(write-line "7,8,9" f)
(write-line (strcat (filled "10,11,12," 112) "13,14,15") f)
(close f)

(foreach name '("own.pln" "dtm.lf" "plain.txt" "long.lf" "none.pln")
  (c:plread)
  (show name))

; Polylines go on the current layer.
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "INPUT") (70 . 0)
           (62 . 4) (6 . "Continuous")))
(setvar "CLAYER" "INPUT")
(c:plread)
(show "with INPUT as the current layer")
(princ (getvar "CLAYER"))
(princ)
