; Prompts that a person answers before the window: by clicks, keys, lines and keywords.
(defun rounded (p) (if p (mapcar '(lambda (x) (atof (rtos x 2 3))) p)))
(defun told () (host-window-log))
(host-window "size" 900 700)
(host-window)
(setvar "OSMODE" 0)
(command "ZOOM" "C" '(50 50) 100.0)
(host-output)
; A click is a point of the drawing, a line the same; right button and Enter key are Enter, Escape cancels.
(host-window "click" '(10.0 20.0))
(rounded (getpoint "\nPoint: "))                          ;=> (10.0 20.0 0.0)
(host-window "type" "3,4\n")
(getpoint "\nPoint: ")                                    ;=> (3.0 4.0 0.0)
(host-window "click" '(1.0 1.0) "right")
(getpoint "\nPoint: ")                                    ;=> nil
(host-window "key" "Return")
(getreal "\nReal: ")                                      ;=> nil
(host-window "key" "Escape")
(vl-catch-all-error-message (vl-catch-all-apply 'getpoint (list "\nPoint: "))) ;=> "Function cancelled"
; A blank ends an answer, but not a text.
(host-window "type" "12 ")
(getint "\nHow many: ")                                   ;=> 12
(host-window "type" "two words\n")
(getstring T "\nText: ")                                  ;=> "two words"
; What doesn't suit is refused, and the prompt stays; a click is no number.
(host-window "type" "abc\n")
(host-window "click" '(1.0 1.0))
(host-window "type" "7\n")
(getint "\nHow many: ")                                   ;=> 7
; The prompt and its keywords, by a click on one
(host-window "tell" "prompt")
(host-window "tell" "keywords")
(host-window "keyword" "Middle")
(initget "Corner Middle eXit")
(getkword "\nWhere [Corner/Middle/eXit]: ")               ;=> "Middle"
(told)                                                    ;=> ("Where [Corner/Middle/eXit]:" "Corner Middle eXit")
; Keywords that the prompt doesn't name stand behind it; the program gets its own names.
(host-window "tell" "keywords")
(host-window "keyword" "Nein")
(initget "Ja Nein _Yes No")
(getkword "\nSure? ")                                     ;=> "No"
(told)                                                    ;=> ("Ja Nein")
(host-window "keyword" "Nowhere")
(host-window "key" "Return")
(getpoint "\nPoint: ")                                    ;=> nil
(told)                                                    ;=> ("no keyword: Nowhere")
; Enter answers the prompt that waits and starts nothing; with no prompt it repeats the last command.
(setq runs 0)
(defun C:COUNTED () (setq runs (1+ runs)) (getpoint "\nPoint: ") (princ))
(host-window "type" "COUNTED\n\n")
(host-window)
runs                                                      ;=> 1
(host-window "type" "\n\n")
(host-window)
runs                                                      ;=> 2
(host-window "tell" "prompt")
(host-window)
(told)                                                    ;=> ("Command:")
; The cursor's ortho binding, F8
(host-window "key" "F8")
(host-window "click" '(60.0 22.0))
(rounded (getpoint '(10 20) "\nTo: "))                    ;=> (60.0 20.0 0.0)
(host-window "key" "F8")
(host-window "click" '(60.0 22.0))
(rounded (getpoint '(10 20) "\nTo: "))                    ;=> (60.0 22.0 0.0)
; Running object snaps, of OSMODE, F3 off and on
(entmake '((0 . "LINE") (10 20.0 80.0 0.0) (11 40.0 80.0 0.0)))
(setvar "OSMODE" 3)
(host-window "move" '(20.4 80.3))
(host-window "tell" "snap")
(host-window "click" '(20.4 80.3))
(rounded (getpoint "\nEnd: "))                            ;=> (20.0 80.0 0.0)
(host-window "click" '(30.3 79.8))
(rounded (getpoint "\nMiddle: "))                         ;=> (30.0 80.0 0.0)
(host-window "key" "F3")
(host-window "click" '(20.4 80.3))
(rounded (getpoint "\nFree: "))                           ;=> (20.4 80.3 0.0)
(getvar "OSMODE")                                         ;=> 16387
(setvar "OSMODE" 0)
(told)                                                    ;=> ("1")
; An unfinished form goes on in the next line; completion and history.
(host-window "type" "(setq unfinished\n")
(host-window "tell" "prompt")
(host-window "type" "42)\n")
(host-window)
unfinished                                                ;=> 42
(host-window "type" "(zb_conn")
(host-window "key" "Tab")
(host-window "tell" "line")
(host-window "key" "Escape")
(host-window "key" "Up")
(host-window "tell" "line")
(host-window "key" "Escape")
(host-window "tell" "line")
(host-window)
(told)                                                    ;=> ("(_>" "(zb_connect" "42)" "")
; Nobody answers when nothing is left to do.
(vl-catch-all-error-message (vl-catch-all-apply 'getpoint (list "\nPoint: "))) ;=> "Function cancelled"
; Points are of the user's coordinate system, here one that a file brings; picks and snaps go with it.
(progn (setq path (strcat (getenv "ZARBO_SCRATCH") "/ucs.dxf") file (open path "w"))
  (foreach line '("0" "SECTION" "2" "HEADER" "9" "$UCSORG" "10" "10.0" "20" "10.0" "30" "0.0" "0" "ENDSEC" "0" "SECTION"
                  "2" "ENTITIES" "0" "LINE" "8" "0" "10" "20.0" "20" "80.0" "11" "40.0" "21" "80.0" "0" "ENDSEC" "0" "EOF")
    (write-line line file))
  (close file) (host-open path) (command "ZOOM" "C" '(50 50) 100.0) (setvar "OSMODE" 0))
(host-window "click" '(30.0 40.0))
(mapcar '(lambda (x) (atof (rtos x 2 3))) (getpoint "\nPoint: "))   ;=> (20.0 30.0 0.0)
(host-window "click" '(25.0 80.0))
(mapcar '(lambda (x) (atof (rtos x 2 3))) (cadr (entsel)))          ;=> (15.0 70.0 0.0)
(osnap '(10.2 70.1) "END")                                          ;=> (10.0 70.0 0.0)
