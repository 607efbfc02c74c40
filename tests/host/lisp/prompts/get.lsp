; Each question takes an answer line; what is printed is prompt and answer, then the value.
; answer: 7
; answer: 2.5
; answer: 3,4
; answer: 1,2,3
; answer: 5,6
; answer: y
; answer: some text
; answer: word
; answer:
; answer: 90
; answer: 90
; answer: 12
; answer: L
; answer:
(print (getint "Number: "))
; expect: Number: 7
; expect: 7
(print (getreal "\nReal: "))
; expect: Real: 2.5
; expect: 2.5
(print (getdist '(0 0) "\nDistance: "))
; expect: Distance: 3,4
; expect: 5.0
(print (getpoint "\nPoint: "))
; expect: Point: 1,2,3
; expect: (1.0 2.0 3.0)
(print (getcorner '(0 0) "\nCorner: "))
; expect: Corner: 5,6
; expect: (5.0 6.0 0.0)
(initget "Yes No")
(print (getkword "\nSure [Yes/No]: "))
; expect: Sure [Yes/No]: y
; expect: "Yes"
(print (getstring t "\nText: "))
; expect: Text: some text
; expect: "some text"
(print (getstring "\nWord: "))
; expect: Word: word
; expect: "word"
(print (getint "\nEmpty: "))
; expect: Empty:
; expect: nil
(print (getangle "\nAngle: "))
; expect: Angle: 90
; expect: 1.5708
(print (getorient "\nOrientation: "))
; expect: Orientation: 90
; expect: 1.5708
(initget 1 "Last")
(print (getint "\nNumber or last: "))
; expect: Number or last: 12
; expect: 12
(initget 1 "Last")
(print (getpoint nil "\nPoint or last: "))
; expect: Point or last: L
; expect: "Last"
(print (getstring "\nEmpty text: "))
; expect: Empty text:
; expect: ""
(print (initget 1))                            ; expect: nil
(getint 5)                                     ; expect error: bad argument type: stringp 5
(getreal 5)                                    ; expect error: bad argument type: stringp 5
(getpoint 5)                                   ; expect error: bad argument type: 2D/3D point: 5
(getpoint '(1 2) 5)                            ; expect error: bad argument type: stringp 5
(getcorner "x")                                ; expect error: bad argument type: 2D/3D point: "x"
(getdist 'a)                                   ; expect error: bad argument type: 2D/3D point: A
(getangle 1 2 3)                               ; expect error: too many arguments
(getorient 7)                                  ; expect error: bad argument type: 2D/3D point: 7
(getkword 5)                                   ; expect error: bad argument type: stringp 5
(getstring 1 2)                                ; expect error: bad argument type: stringp 2
(initget 1 "a" 3)                              ; expect error: too many arguments
