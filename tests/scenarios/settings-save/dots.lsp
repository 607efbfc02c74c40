; Without an extension the last point of the whole path counts, one in a directory too.
(load "block.lsp")
(setq clfil "C:\\JOB\\MAIN.CL" tmpdir$ nil)
(cf:zentutil "C:\\JOB\\user\\" 26 "C:\\JOB\\A.B\\NAME")
(show-file "C:\\JOB\\A.ini")
(princ)
