; A function with a page of help, which asks in a dialog of its own.
(defun c:pointer (/ dialogs count result)
  (setq dialogs (load_dialog "ask.dcl"))
  (new_dialog "ask" dialogs)
  (action_tile "count" "(setq count $value)")
  (setq result (start_dialog))
  (unload_dialog dialogs)
  (list result count))
