; answer: name=typed
; answer: flag=1
; answer: !more
; answer: list=1
; answer: !accept
; answer: !cancel
; answer: !more
(setq id (load_dialog "ask.dcl") pressed nil told nil)
(print (>= id 0))                              ; expect: T
(print (new_dialog "nosuch" id))               ; expect: nil
(print (new_dialog "ask" id))                  ; expect: T
(print (get_tile "name"))                      ; expect: "start"
(print (get_attr "name" "label"))              ; expect: "Name"
(set_tile "name" "set")
(print (get_tile "name"))                      ; expect: "set"
(mode_tile "flag" 0)
(start_list "list")
(mapcar 'add_list '("one" "two"))
(end_list)
(print (and (dimx_tile "picture") (dimy_tile "picture"))) ; expect: T
(start_image "picture")
(fill_image 0 0 10 10 -2)
(vector_image 0 0 5.0 5.0 1)
(slide_image 0 0 5 5 "nosuch")
(end_image)
(client_data_tile "list" "data of list")
(action_tile "name" "(setq told (cons (list $key $value $reason) told))")
(action_tile "flag" "(setq told (cons (list $key $value) told))")
(action_tile "list" "(setq told (cons (list $key $value $data) told))")
(action_tile "accept" "(setq kept (get_tile \"name\")) (done_dialog 5)")
(print (start_dialog))
; expect: [dialog ask]
; expect: name=typed
; expect: flag=1
; expect: !more
; expect: list=1
; expect: !accept
; expect: 5
(print (reverse told))
; expect: (("name" "typed" 1) ("flag" "1") ("list" "1" "data of list"))
(print pressed)                                ; expect: ("more")
(print kept)                                   ; expect: "typed"
(new_dialog "ask" id)
(print (start_dialog))
; expect: [dialog ask]
; expect: !cancel
; expect: 0
; An error in an action ends the dialog and the program.
(new_dialog "ask" id "(car 5)")
(action_tile "more" "(nosuch)")
(start_dialog)
; expect: [dialog ask]
; expect: !more
; expect error: no function definition: NOSUCH
(print (unload_dialog id))                     ; expect: nil
(print (start_dialog))                         ; expect: nil
(print (done_dialog))                          ; expect: nil
(print (term_dialog))                          ; expect: nil
(print (get_tile "name"))                      ; expect: nil
(print (load_dialog "nosuchfile.dcl"))         ; expect: -1
(load_dialog 5)                                ; expect error: bad argument type: stringp 5
(unload_dialog "x")                            ; expect error: bad argument type: fixnump: "x"
(new_dialog "ask")                             ; expect error: too few arguments
(start_dialog 1)                               ; expect error: too many arguments
(done_dialog "x")                              ; expect error: bad argument type: fixnump: "x"
(term_dialog 1)                                ; expect error: too many arguments
(action_tile "a" 5)                            ; expect error: bad argument type: stringp 5
(client_data_tile "a" 5)                       ; expect error: bad argument type: stringp 5
(set_tile "a" 5)                               ; expect error: bad argument type: stringp 5
(get_tile 5)                                   ; expect error: bad argument type: stringp 5
(get_attr "a")                                 ; expect error: too few arguments
(mode_tile "a" "b")                            ; expect error: bad argument type: fixnump: "b"
(start_list 5)                                 ; expect error: bad argument type: stringp 5
(add_list 5)                                   ; expect error: bad argument type: stringp 5
(end_list 5)                                   ; expect error: too many arguments
(dimx_tile 5)                                  ; expect error: bad argument type: stringp 5
(dimy_tile 5)                                  ; expect error: bad argument type: stringp 5
(start_image 5)                                ; expect error: bad argument type: stringp 5
(fill_image 1 2 3 4 "x")                       ; expect error: bad argument type: numberp: "x"
(vector_image 1 2 3 4)                         ; expect error: too few arguments
(slide_image 1 2 3 4 5)                        ; expect error: bad argument type: stringp 5
(end_image 1)                                  ; expect error: too many arguments
