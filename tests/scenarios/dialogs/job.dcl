// A dialog with a tile of every kind that takes answers, and one that it opens.
narrow : edit_box { edit_width = 12; edit_limit = 8; }

job : dialog {
    label = "Job";
    : row {
        : narrow { key = "name"; label = "Name:"; }
        : toggle { key = "metric"; label = "Metric"; value = "1"; }
    }
    : radio_row { key = "form"; value = "own";
        : radio_button { key = "own"; label = "Own"; }
        : radio_button { key = "dtm"; label = "DTM"; }
    }
    : list_box { key = "layers"; multiple_select = true; }
    : button { key = "more"; label = "More..."; }
    ok_cancel_errtile;
}

more : dialog {
    label = "More";
    : slider { key = "step"; min_value = 1; max_value = 10; value = 5; }
    : edit_box { key = "note"; action = "(setq note $value)"; allow_accept = true; }
    ok_cancel;
}
