; zentrik.lsp: what each drawing starts with: the product's directories and a command for each tool.
; The host sets *zentrik-share* to the directory of the product's files, with its separator.

; Sets a variable that has no value yet.
(defun zt:standard (name value)
  (if (null (eval name)) (set name value))
  (eval name))

; The value of a call, run without the prompts of the commands that it sends.
(defun zt:quietly (call / echo *error*)
  (setq echo (getvar "CMDECHO"))
  (defun *error* (message) (setvar "CMDECHO" echo) (princ (strcat "\n; error: " message)))
  (setvar "CMDECHO" 0)
  (setq call (eval call))
  (setvar "CMDECHO" echo)
  call)

(zt:standard 'lspdir$ (strcat *zentrik-share* "dialogs/"))
(zt:standard 'psname (strcat *zentrik-share* "symbols/"))
; A job's files lie beside its drawing until a program says otherwise.
(zt:standard 'usrdir$ (getvar "DWGPREFIX"))
(zt:standard 'tmpdir$ (getvar "DWGPREFIX"))

; ---- polyline files ----------------------------------------------------------------------------
(defun c:plwrite () (cf:zentutil usrdir$ 15 tmpdir$ lspdir$) (princ))
(defun c:plread () (cf:zentutil usrdir$ 27 tmpdir$ lspdir$) (princ))

; ---- drafting tools ----------------------------------------------------------------------------
(defun c:horizview () (cf:zentutil usrdir$ 0) (princ))
(defun c:pointer () (cf:zentutil usrdir$ 1) (princ))
(defun c:extendarc () (cf:zentutil usrdir$ 2) (princ))
; The standard size is that of the last text; the tool asks for another.
(defun c:arctext () (zt:quietly '(cf:zentutil usrdir$ 6 (getvar "TEXTSIZE"))) (princ))
(defun c:curveleader () (cf:zentutil usrdir$ 4) (princ))
(defun c:addarrow () (cf:zentutil usrdir$ 30) (princ))

; The answers of the last time are the standards of the next.
(setq zt:elevation nil)
(defun c:chgelev (/ answers)
  (setq answers (zt:quietly '(apply 'cf:chgpnts zt:elevation)))
  (if answers (setq zt:elevation answers))
  (princ))
