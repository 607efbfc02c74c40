job : dialog {
    label = "Job";
    : edit_box { key = "name"; label = "Name"; }
    ok_cancel;
}
