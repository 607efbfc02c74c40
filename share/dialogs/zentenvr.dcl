// zentenvr.dcl: dialogs about the surroundings of a job. Their keys are what the programs ask for;
// everything else is layout.

// Whose help is wanted, when nothing is running that would say it.
select_help : dialog {
    label = "Help";
    : boxed_radio_column {
        label = "Show help for";
        : radio_button { key = "zent"; label = "Zentrik"; mnemonic = "Z"; }
        : radio_button { key = "acad"; label = "The drawing program"; mnemonic = "d"; }
    }
    : row { fixed_width = true; alignment = centered;
        : button { key = "ok"; label = "OK"; is_default = true; width = 10; fixed_width = true; }
        : button { key = "cancel"; label = "Cancel"; is_cancel = true; width = 10; fixed_width = true; }
    }
}
