d : dialog { : row { label = "x"; }
