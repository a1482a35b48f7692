; Closing the window during a drag: "Cancel" lets it go on, "No" ends it and every later prompt.
(host-window "size" 900 700)
(host-window)
(setvar "OSMODE" 0)
(command "ZOOM" "C" '(50 50) 100.0)
(host-output)
(entmake '((0 . "POINT") (10 1.0 2.0 0.0)))
(setq drawn (entlast))
(host-answer "CANCEL" "NO")
(host-window "move" '(20.0 20.0))
(host-window "close")
(host-window "click" '(50.0 50.0))
(host-window "key" "Return")
(mapcar (quote fix) (nth 1 (RectangleJig 3.0 4.0)))          ;=> (50 50 0)
(length (host-boxes))                                     ;=> 1
(host-window "move" '(20.0 20.0))
(host-window "close")
(host-window "click" '(50.0 50.0))
(RectangleJig 3.0 4.0)                                    ;=> nil
(length (host-boxes))                                     ;=> 1
(eq (entlast) drawn)                                      ;=> T
(host-window "type" "5\n")
(vl-catch-all-error-message (vl-catch-all-apply '(lambda () (getint "\nHow many: ")))) ;=> "Function cancelled"
(RectangleJig 3.0 4.0)                                    ;=> nil
