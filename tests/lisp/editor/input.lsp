; What a prompt gives for what comes in. Points, typed as a CAD user types them
(host-input '(1 2) '(1.0 2.0 3.0) "4,5" "4,5,6" "@1,1" "@" "@2<90" "2<0" "@1,2,3" "1'2\",3" "3<180,5" "10<0<90")
(getpoint "\nStart: ")                          ;=> (1.0 2.0 0.0)
;| Start: 
(getpoint)                                      ;=> (1.0 2.0 3.0)
(getpoint '(0 0))                               ;=> (4.0 5.0 0.0)
(getpoint '(0 0) "To: ")                        ;=> (4.0 5.0 6.0)
(getpoint)                                      ;=> (5.0 6.0 6.0)
(getpoint)                                      ;=> (5.0 6.0 6.0)
(mapcar 'rtos (getpoint))                       ;=> ("5.0000" "8.0000" "6.0000")
(getpoint)                                      ;=> (2.0 0.0 0.0)
(getpoint)                                      ;=> (3.0 2.0 3.0)
(getvar "LASTPOINT")                            ;=> (3.0 2.0 3.0)
(getpoint)                                      ;=> (14.0 3.0 0.0)
(mapcar 'rtos (getpoint))                       ;=> ("-3.0000" "0.0000" "5.0000")
(mapcar 'rtos (getpoint))                       ;=> ("0.0000" "0.0000" "10.0000")
(host-prompts)                                  ;=> ("\nStart: " "" "" "To: " "" "" "" "" "" "" "" "")
; What doesn't suit is refused, and the next item taken.
(host-input "1" "a,b" "1,2,3,4" "1e999,0" "<" "5<" "1,2")
(host-output)
(progn (getpoint "P: ") (host-output))
;=> "P: \nInvalid point.\nP: \nInvalid point.\nP: \nInvalid point.\nP: \nInvalid point.\nP: \nInvalid point.\nP: \nInvalid point.\nP: "
; But what a program prints stands before its prompt.
(progn (host-input '(1 2)) (princ "Now. ") (getpoint "P: ") (host-output))   ;=> "Now. P: "
(host-input 'enter)
(getpoint)                                      ;=> nil
; Nobody answers: the prompt counts as cancelled.
(getpoint "Nobody: ")                           ;=> ; error: Function cancelled
(host-input 'cancel "\e")
(getpoint)                                      ;=> ; error: Function cancelled
(getreal)                                       ;=> ; error: Function cancelled
(getpoint "a" "b")                              ;=> ; error: too many arguments
(getpoint 5)                                    ;=> ; error: bad argument type: point: 5
; The opposite corner lies at the base's height.
(host-input '(5 5 9))
(getcorner '(1 1 2))                            ;=> (5.0 5.0 2.0)
(getcorner "No base")                           ;=> ; error: bad argument type: point: "No base"
; Rules hold for one prompt alone.
(initget 1)
(host-input 'enter "" '(0 0))
(getpoint)                                      ;=> (0.0 0.0 0.0)
(host-input 'enter)
(getpoint)                                      ;=> nil
; Numbers
(host-output)
(defun answers (bits asked / ) (initget bits) (eval asked))
(host-input 0 -1 2)
(answers 6 '(getint))                           ;=> 2
(host-output)                                   ;=> "\nValue must be positive and nonzero.\nValue must be positive and nonzero."
(host-input "40000" "x" "1.5" "-7")
(getint)                                        ;=> -7
(host-output)                                   ;=> "\nRequires an integer between -32768 and 32767.\nRequires an integer value.\nRequires an integer value."
(host-input "1/2" "3'6\"" 4 "-1e3" "text" 1.5)
(list (getreal) (getreal) (getreal) (getreal) (getreal))   ;=> (0.5 42.0 4.0 -1000.0 1.5)
(host-output)                                   ;=> "\nRequires numeric value."
(host-input 0.0 2.5)
(answers 2 '(getdist))                          ;=> 2.5
(host-input -0.5 2.5)
(answers 4 '(getdist))                          ;=> 2.5
(host-output)                                   ;=> "\nValue must be nonzero.\nValue must be positive."
; Distances and angles by points
(host-input '(3 4 12) '(0 0 0) '(3 4 12) '(0 0 0) '(3 4 12) "@3,4")
(getdist '(0 0 0))                              ;=> 13.0
(answers 64 '(getdist "D: "))                   ;=> 5.0
(getdist)                                       ;=> 13.0
(host-output)                                   ;=> "\nD: \nSpecify second point: \nSpecify second point: "
(getdist '(3 4 12))                             ;=> 12.0
(host-input "90" "0.5r" "N45dE" '(0 5) '(0 0) '(-1 0) 1.25)
(rtos (getangle) 2 6)                           ;=> "1.570796"
(getangle)                                      ;=> 0.5
(rtos (getorient) 2 6)                          ;=> "0.785398"
(rtos (getangle '(0 0)) 2 6)                    ;=> "1.570796"
(rtos (getangle) 2 6)                           ;=> "3.141593"
(getangle)                                      ;=> 1.25
; With north as the angle zero, clockwise: a typed angle stays relative to it, a direction does not.
(progn (setvar "ANGBASE" (/ pi 2)) (setvar "ANGDIR" 1))
(host-input "90" "90" '(1 0) '(1 0) "@2<90")
(mapcar '(lambda (x) (rtos x 2 4)) (list (getorient) (getangle) (getorient '(0 0)) (getangle '(0 0))))
;=> ("0.0000" "-1.5708" "0.0000" "4.7124")
(mapcar '(lambda (x) (rtos x 2 4)) (getpoint))  ;=> ("2.0000" "0.0000" "0.0000")
(progn (setvar "ANGBASE" 0.0) (setvar "ANGDIR" 0))
; Texts
(host-input "plain" 'enter 7 "two words")
(getstring)                                     ;=> "plain"
(getstring "Name: ")                            ;=> ""
(getstring nil "Name: ")                        ;=> "7"
(getstring T "Name: ")                          ;=> "two words"
; Keywords by the rule of capitals
(defun keys (list typed) (initget list) (host-input typed 'cancel) (setq r (vl-catch-all-apply 'getkword)) (if (vl-catch-all-error-p r) nil (progn (vl-catch-all-apply 'getpoint) r)))
(mapcar '(lambda (x) (keys "Undo eXit LType LTScale ALL 2Points toP" x)) '("u" "U" "UNDO" "und" "undos" "x" "ex" "e" "l" "lt" "ltype" "lts" "all" "al" "2" "2p" "p" "_U" "_undo"))
;=> ("Undo" "Undo" "Undo" "Undo" nil "eXit" "eXit" nil nil "LType" "LType" "LTScale" "ALL" nil nil "2Points" "toP" "Undo" "Undo")
(mapcar '(lambda (x) (keys "LTYPE,LT ENTIRE,E" x)) '("l" "lt" "ltyp" "e" "ent" "ltx"))
;=> (nil "LTYPE" "LTYPE" "ENTIRE" "ENTIRE" nil)
(mapcar '(lambda (x) (keys "Ja Nein _Yes No" x)) '("j" "nein" "_y" "_No" "y" "_j"))
;=> ("Yes" "No" "Yes" "No" nil nil)
(progn (initget "Undo _Undo") (host-input "u") (getpoint))    ;=> "Undo"
(progn (initget 128) (host-input "whatever you say") (getpoint))   ;=> "whatever you say"
(progn (initget 129) (host-input "") (getpoint))   ;=> ""
(progn (initget 128 "Yes") (host-input "y" "1,1") (list (getreal) (getpoint)))   ;=> ("Yes" (1.0 1.0 0.0))
(getkword)                                      ;=> nil
(host-output)
(progn (initget "Yes No") (host-input "maybe" "y") (getkword "Sure? [Yes/No]: "))   ;=> "Yes"
(host-output)                                   ;=> "\nSure? [Yes/No]: \nInvalid option keyword.\nSure? [Yes/No]: "
(progn (initget "Yes") (host-input "maybe" 1) (getdist '(0 0)))   ;=> 1.0
(host-output)                                   ;=> "\nRequires numeric distance, second point, or option keyword."
(initget 5 5)                                   ;=> ; error: bad argument type: stringp 5
