; zentrik.lsp: what each drawing starts with: the product's directories and a command for each tool.
; The host sets *zentrik-share* to the directory of the product's files, with its separator.

; Sets a variable that has no value yet.
(defun zt:standard (name value)
  (if (null (eval name)) (set name value))
  (eval name))

; The value of a call of the module, run without the prompts of the commands that it sends. A break, or an end
; of the answers, is left to the *error* function of the program around it, with all put back before. The
; names stand apart from those that a user's answer may ask for.
(defun zt:quietly (zt:call / zt:echo zt:error zt:step)
  (setq zt:echo (getvar "CMDECHO") zt:error *error*)
  (defun *error* (message)
    (zt:put-back)
    (if *error* (*error* message) (princ (strcat "\n; error: " message))))
  (setvar "CMDECHO" 0)
  (setq zt:call (eval zt:call))
  (zt:put-back)
  zt:call)

; The value of a call whose commands are one step of undo together, for a call inside zt:quietly.
(defun zt:in-one-step (zt:call)
  (command "_.UNDO" "_BEGIN")
  (setq zt:step T)
  (eval zt:call))

(defun zt:put-back ()
  (if zt:step (command "_.UNDO" "_END"))
  (setvar "CMDECHO" zt:echo)
  (setq *error* zt:error))

(zt:standard 'lspdir$ (strcat *zentrik-share* "dialogs/"))
(zt:standard 'psname (strcat *zentrik-share* "symbols/"))
; A job's files lie beside its drawing until a program says otherwise.
(zt:standard 'usrdir$ (getvar "DWGPREFIX"))
(zt:standard 'tmpdir$ (getvar "DWGPREFIX"))

; ---- polyline files ----------------------------------------------------------------------------
(defun c:plwrite () (cf:zentutil usrdir$ 15 tmpdir$ lspdir$) (princ))
(defun c:plread () (cf:zentutil usrdir$ 27 tmpdir$ lspdir$) (princ))

; ---- drafting tools ----------------------------------------------------------------------------
(defun c:horizview () (zt:quietly '(cf:zentutil usrdir$ 0)) (princ))
(defun c:pointer () (zt:quietly '(cf:zentutil usrdir$ 1)) (princ))
(defun c:extendarc () (cf:zentutil usrdir$ 2) (princ)) ; sends no commands
(defun c:curveleader () (zt:quietly '(cf:zentutil usrdir$ 4)) (princ))
; The standard size is that of the last text; the tool asks for another.
(defun c:arctext () (zt:quietly '(cf:zentutil usrdir$ 6 (getvar "TEXTSIZE"))) (princ))
(defun c:addarrow () (zt:quietly '(cf:zentutil usrdir$ 30)) (princ))
(defun c:txtscale () (zt:quietly '(zt:in-one-step '(cf:txtenl))) (princ))
(defun c:trimsymbols () (zt:quietly '(zt:in-one-step '(cf:zentutil usrdir$ 3))) (princ))

; ---- elevations ----------------------------------------------------------------------------------
; The answers of the last time are the standards of the next.
(setq zt:elevation nil)
(defun c:chgelev (/ zt:answers)
  (setq zt:answers (zt:quietly '(zt:in-one-step '(apply 'cf:chgpnts zt:elevation))))
  (if zt:answers (setq zt:elevation zt:answers))
  (princ))

; ---- begin a drawing -----------------------------------------------------------------------------
; The wizard asks what to begin with and hands the command line one of the two commands behind it.
(defun c:wizard (/ zt:before)
  (if (wcmatch (strcase (getvar "DWGNAME")) "*DRAWING.DWG*,*DRAWING[1-9].DWG*")
    (progn
      (zt:standard 'sv:sm 50.0)
      (zt:standard 'sv:ts 0.1)
      (zt:standard 'sv:ps 0.1)
      (setq zt:before use_startwiz use_startwiz 1)
      (cf:zentutil usrdir$ 42)
      ; 0 by now when the user doesn't want to see it again
      (if (= use_startwiz 1) (setq use_startwiz zt:before)))
    (princ "\nThe wizard begins drawings that have no name yet."))
  (princ))

(defun c:open_dwg (zt:path) (command "_.OPEN" zt:path) (princ))

; The current drawing has no name and has got its scales and sizes: it becomes the new one, and the job's
; directories, unless a program has set them, go along.
(defun c:start_wiz (/ zt:before)
  (setq zt:before (getvar "DWGPREFIX"))
  ; The wizard's question didn't come for a drawing that was named without its extension: here that of the command
  ; itself is to be seen.
  (cond
    ((or (/= (type dwg_filenm) 'STR) (= dwg_filenm ""))
      (princ "\nWIZARD asks for the drawing that START_WIZ makes: dwg_filenm has no name."))
    ((findfile (strcat dwg_filenm ".dwg")) (command "_.SAVEAS" "" dwg_filenm))
    (t (zt:quietly '(command "_.SAVEAS" "" dwg_filenm))))
  (if (= usrdir$ zt:before) (setq usrdir$ (getvar "DWGPREFIX")))
  (if (= tmpdir$ zt:before) (setq tmpdir$ (getvar "DWGPREFIX")))
  (princ))
