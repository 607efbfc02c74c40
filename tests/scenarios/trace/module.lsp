; What the module asks of its host.
(cf:zentutil usrdir$ 14 "a.b" 3)
(cf:zentutil usrdir$ 20 "COREHOLE")
(cf:zentutil usrdir$ 15 "" lspdir$)
(cf:zentutil)
(setq id (load_dialog "zentfile.dcl"))
(princ)
