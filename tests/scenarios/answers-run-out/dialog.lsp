; A dialog that nobody answers any more is closed by its cancel.
(setq id (load_dialog "job.dcl"))
(new_dialog "job" id)
(action_tile "accept" "(print \"never\") (done_dialog 1)")
(action_tile "cancel" "(princ \"\\ncancelled by its own action\") (done_dialog 7)")
(princ "\nends with ")
(princ (start_dialog))
(princ "\nand the program goes no further than its next prompt")
(getint "\nCount: ")
