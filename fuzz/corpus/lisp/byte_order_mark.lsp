(princ 1)
(setq ﻿a 2)
'(b ﻿c)
