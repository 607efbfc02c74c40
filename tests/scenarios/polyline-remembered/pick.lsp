; The default is a folder with no name in it, so that what is remembered counts.
(setq tmpdir$ "elsewhere/")
(c:plwrite)                ; chosen: job/own.pln
(c:plread)                 ; opens in JOB\
(c:plread)                 ; no DTM file is known yet
(setq do_ini 0)
(c:plwrite)                ; not remembered
(setq do_ini nil)
(c:plwrite)                ; job/own.pln is to stay: the dialog comes again with it
(c:plread)                 ; the newest is the first
(princ)
