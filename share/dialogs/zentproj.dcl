// zentproj.dcl: the start wizard's two pages. Their keys are what the programs ask for; everything else is
// layout.

wiz_button : button { width = 14; fixed_width = true; }
wiz_size : edit_box { edit_width = 9; edit_limit = 20; }

// What to begin with: a drawing of the last days, any other, or a new one.
start_wiz0 : dialog {
    label = "Zentrik - Start";
    initial_focus = "lister";
    : row {
        : list_box { key = "lister"; label = "Recent drawings:"; mnemonic = "R"; width = 56; height = 12; }
        : column {
            : text { label = "Preview"; }
            : image { key = "image"; width = 21; height = 6; color = 7; fixed_width = true; fixed_height = true; }
            spacer;
        }
    }
    : toggle { key = "skip_wiz"; label = "Don't show this again when a drawing is begun"; mnemonic = "D"; }
    : row { fixed_width = true; alignment = centered;
        : wiz_button { key = "select"; label = "Select"; mnemonic = "S"; is_default = true; }
        : wiz_button { key = "new"; label = "New..."; mnemonic = "N"; }
        : wiz_button { key = "open"; label = "Open..."; mnemonic = "O"; }
        : wiz_button { key = "cancel"; label = "Cancel"; is_cancel = true; }
        : wiz_button { key = "help"; label = "Help"; is_help = true; }
    }
}

// Name, units and scale of a new drawing. Sizes stand twice: as they are plotted, and as they lie in the
// drawing at the horizontal scale.
start_wiz1 : dialog {
    label = "Zentrik - New Drawing";
    : boxed_column { label = "Drawing to create";
        : row {
            : text { key = "filenm"; width = 46; }
            : wiz_button { key = "select1"; label = "Set..."; mnemonic = "t"; }
        }
    }
    : row {
        : boxed_radio_column { label = "Scale is given as";
            : radio_button { key = "english"; label = "Feet to the inch, sizes in inches"; mnemonic = "F"; }
            : radio_button { key = "metric"; label = "Ratio 1 to, sizes in centimetres"; mnemonic = "R"; }
        }
        : boxed_radio_column { label = "Unit of length";
            : radio_button { key = "tog1"; label = "Feet"; mnemonic = "e"; }
            : radio_button { key = "tog2"; label = "Metres"; mnemonic = "M"; }
        }
    }
    : boxed_column { label = "Scale and sizes";
        : wiz_size { key = "hsc"; label = "Horizontal scale:"; mnemonic = "H"; }
        : row {
            : column {
                : text { label = "On paper"; }
                : wiz_size { key = "txts"; label = "Text size:"; mnemonic = "x"; }
                : wiz_size { key = "syms"; label = "Symbol size:"; mnemonic = "y"; }
            }
            : column {
                : text { label = "In the drawing"; }
                : wiz_size { key = "txts2"; label = "Text size:"; }
                : wiz_size { key = "syms2"; label = "Symbol size:"; }
            }
        }
    }
    : toggle { key = "skip_wiz"; label = "Don't show this again when a drawing is begun"; mnemonic = "D"; }
    : row { fixed_width = true; alignment = centered;
        : wiz_button { key = "ok"; label = "OK"; is_default = true; }
        : wiz_button { key = "cancel"; label = "Cancel"; is_cancel = true; }
        : wiz_button { key = "help"; label = "Help"; is_help = true; }
    }
}
