damaged : dialog {
  label = "No end;
}
