ask : dialog {
  label = "Count";
  : edit_box { label = "&Count"; key = "count"; }
  ok_cancel;
}
