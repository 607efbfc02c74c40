d : dialog { label = "x
}