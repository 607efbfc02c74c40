(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 2) (70 . 0) (38 . 1.5)
           (10 0.0 0.0) (10 3.0 4.0)))
(entmake '((0 . "LINE") (10 50.0 50.0 0.0) (11 60.0 50.0 0.0)))
(princ)
