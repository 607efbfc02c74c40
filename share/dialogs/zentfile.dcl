// zentfile.dcl: the small dialogs that all of the product shares.

zent_alert : dialog {
  label = "Zentrik";
  : text {
    key = "msg";
    width = 50;
  }
  : button {
    key = "ok";
    label = "OK";
    is_default = true;
    is_cancel = true;
    fixed_width = true;
    alignment = centered;
  }
}

zent_get_string : dialog {
  label = "Zentrik";
  : text {
    key = "prompt";
    width = 50;
  }
  : edit_box {
    key = "value";
    edit_width = 50;
    edit_limit = 255;
    allow_accept = true;
  }
  ok_cancel;
}

zent_yesnoall : dialog {
  label = "Zentrik";
  : text {
    key = "prompt";
    width = 60;
  }
  : row {
    : button {
      key = "yes";
      label = "Yes";
      is_default = true;
    }
    : button {
      key = "yesall";
      label = "Yes to All";
    }
    : button {
      key = "no";
      label = "No";
    }
    : button {
      key = "noall";
      label = "No to All";
    }
  }
}
