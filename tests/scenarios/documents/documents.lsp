(cf:zentutil usrdir$ 36 "C:\\JOB\\A $(touch made) B.PDF")
(cf:zentutil usrdir$ 47 "slow \"a b\" C:\\JOB %PATH% ; touch made")
(princ (if (findfile "waited") "it has ended\n" "it runs on\n"))
(cf:zentutil usrdir$ 47 "nothing-of-that-name x")
