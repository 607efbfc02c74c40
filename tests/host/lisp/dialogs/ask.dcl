// ask.dcl: the dialog of dialogs/tiles.lsp
ask : dialog {
  label = "Ask";
  : edit_box { key = "name"; label = "Name"; value = "start"; }
  : toggle { key = "flag"; label = "Flag"; }
  : list_box { key = "list"; }
  : image { key = "picture"; width = 20; height = 5; }
  : button { key = "more"; label = "More"; action = "(setq pressed (cons $key pressed))"; }
  ok_cancel;
}
