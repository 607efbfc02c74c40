;;; LAYTOOL - lists the layers with the number of their objects, isolates some, puts a prefix in front.

(defun lt:layers (/ rec out)
  (while (setq rec (tblnext "LAYER" (null rec)))
    (setq out (cons (cdr (assoc 2 rec)) out)))
  (acad_strlsort out))

(defun lt:count (name / ss)
  (if (setq ss (ssget "X" (list (cons 8 name)))) (sslength ss) 0))

(defun lt:write-dcl (/ name f)
  (setq name (vl-filename-mktemp "lt.dcl") f (open name "w"))
  (foreach line
    '("laytool : dialog { label = \"Layers\";"
      "  : list_box { key = \"layers\"; label = \"&Layers\"; width = 40; height = 12; multiple_select = true; tabs = \"30\"; }"
      "  : boxed_row { label = \"What\";"
      "    : button { key = \"isolate\"; label = \"&Isolate\"; }"
      "    : edit_box { key = \"prefix\"; label = \"Prefix:\"; edit_width = 10; }"
      "  }"
      "  : text { key = \"told\"; width = 40; }"
      "  ok_cancel; errtile;"
      "}")
    (write-line line f))
  (close f)
  name)

(defun lt:fill (names)
  (start_list "layers")
  (mapcar 'add_list (mapcar '(lambda (n) (strcat n "\t" (itoa (lt:count n)))) names))
  (end_list))

(defun lt:chosen () (mapcar '(lambda (i) (nth i names)) (read (strcat "(" (get_tile "layers") ")"))))

(defun lt:isolate (keep / e)
  (foreach n names
    (setq e (entget (tblobjname "LAYER" n)))
    (entmod (subst (cons 62 (* (if (member n keep) 1 -1) (abs (cdr (assoc 62 e))))) (assoc 62 e) e)))
  (set_tile "told" (strcat (itoa (length keep)) " layers are on")))

(defun lt:accept ()
  (setq prefix (get_tile "prefix"))
  (cond ((= prefix "") (set_tile "error" "A prefix is wanted.") (mode_tile "prefix" 2))
        (T (setq chosen (lt:chosen)) (done_dialog 1))))

(defun c:laytool (/ id file names prefix chosen result e)
  (setq file (lt:write-dcl) names (lt:layers))
  (if (or (< (setq id (load_dialog file)) 0) (not (new_dialog "laytool" id)))
    (progn (alert "The dialog is missing.") (exit)))
  (lt:fill names)
  (action_tile "isolate" "(lt:isolate (lt:chosen))")
  (action_tile "accept" "(lt:accept)")
  (action_tile "cancel" "(done_dialog 0)")
  (setq result (start_dialog))
  (unload_dialog id)
  (vl-file-delete file)
  (if (= result 1)
    (foreach n chosen
      (if (not (member n '("0")))
        (progn
          (setq e (entget (tblobjname "LAYER" n)))
          (entmod (subst (cons 2 (strcat prefix n)) (assoc 2 e) e))))))
  (princ (strcat "\nDialog gave " (itoa result)))
  (princ))

(c:laytool)
(foreach n (lt:layers)
  (princ (strcat "\n" n " " (itoa (lt:count n)) (if (minusp (cdr (assoc 62 (tblsearch "LAYER" n)))) " off" ""))))
(c:laytool)
(princ)
