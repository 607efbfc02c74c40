// zentfile.dcl: the small dialogs that all of the product shares. Their keys are what the programs ask
// for; everything else is layout.

// A message of one line.
zent_alert : dialog {
    label = "Zentrik";
    : text { key = "msg"; width = 52; }
    : button { key = "ok"; label = "OK"; is_default = true; is_cancel = true;
               fixed_width = true; alignment = centered; }
}

// One line of text.
zent_get_string : dialog {
    label = "Zentrik";
    initial_focus = "value";
    : text { key = "prompt"; width = 52; }
    : edit_box { key = "value"; edit_width = 52; edit_limit = 254; allow_accept = true; }
    : row { fixed_width = true; alignment = centered;
        : button { key = "ok"; label = "OK"; is_default = true; width = 10; fixed_width = true; }
        : button { key = "cancel"; label = "Cancel"; is_cancel = true; width = 10; fixed_width = true; }
    }
}

// A question that comes for many things in turn. Closing it is the answer that stops the changes.
zent_yesnoall : dialog {
    label = "Zentrik";
    : text { key = "prompt"; width = 52; }
    : row { fixed_width = true; alignment = centered;
        : button { key = "yes"; label = "Yes"; mnemonic = "Y"; is_default = true; }
        : button { key = "yesall"; label = "Yes to all"; mnemonic = "e"; }
        : button { key = "no"; label = "No"; mnemonic = "N"; }
        : button { key = "noall"; label = "No to all"; mnemonic = "o"; is_cancel = true; }
    }
}

// Whether a file is begun anew or goes on.
zt_newappend : dialog {
    label = "Write File";
    : text { key = "type"; width = 36; }
    : row { fixed_width = true; alignment = centered;
        : button { key = "new"; label = "New file"; mnemonic = "N"; is_default = true; }
        : button { key = "append"; label = "Append"; mnemonic = "A"; }
        : button { key = "cancel"; label = "Cancel"; is_cancel = true; }
    }
}

// A layer name that the drawing can't have, to be mended.
zt_badlayer : dialog {
    label = "Invalid Layer Name";
    initial_focus = "newnam";
    : text { key = "badnam"; width = 60; }
    : edit_box { key = "newnam"; label = "New name:"; mnemonic = "w"; edit_width = 40; edit_limit = 78;
                 allow_accept = true; }
    : row { fixed_width = true; alignment = centered;
        : button { key = "ok"; label = "OK"; is_default = true; width = 10; fixed_width = true; }
        : button { key = "cancel"; label = "Cancel"; is_cancel = true; width = 10; fixed_width = true; }
        : button { key = "help"; label = "Help"; is_help = true; width = 10; fixed_width = true; }
    }
}
