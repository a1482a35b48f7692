; The window while programs run: drags, timers, boxes, progress, long LISP, and its end.
(defun told () (host-window-log))
(defun rounded (x) (cond ((listp x) (mapcar 'rounded x)) ((= (type x) 'REAL) (atof (rtos x 2 2))) (T x)))
(host-window "size" 900 700)
(host-window)
(setvar "OSMODE" 0)
(command "ZOOM" "C" '(50 50) 100.0)
(host-output)
; A drag of the module's follows the mouse: samples, then the click, then the turn by Enter.
(host-window "move" '(20.0 20.0))
(host-window "move" '(30.0 40.0))
(host-window "click" '(50.0 50.0))
(host-window "key" "Return")
(rounded (nth 1 (RectangleJig 3.0 4.0)))                  ;=> (50.0 50.0 0.0)
(setq log (host-drag-log))
(> (cadr (car log)) 2)                                    ;=> T
; Its keywords can be clicked.
(host-window "keyword" "Middle")
(host-window "click" '(10.0 20.0))
(host-window "key" "Return")
(rounded (last (RectangleJig 3.0 4.0)))                   ;=> 0
; Documents can't be switched under a drag, nor while a prompt waits.
(host-new "Second.dwg")
(host-window "tab" 0)
(host-window "tell" "tabs")
(host-window "key" "Escape")
(RectangleJig 3.0 4.0)                                    ;=> nil
(host-window "tab" 0)
(host-window "tell" "tabs")
(host-window)
(told)                                                    ;=> ("Drawing1.dwg [Second.dwg]" "[Drawing1.dwg] Second.dwg")
; A disabled window takes no clicks; the timer brings it back.
(kv_kv-disableAutoCADWindow)
(host-window "tell" "enabled")
(host-window "click" '(1.0 1.0))
(host-window "tell" "enabled")
(vl-catch-all-error-message (vl-catch-all-apply 'getpoint (list "\nPoint: "))) ;=> "Function cancelled"
(progn (kv_kv-createJigTimer 10) (princ))
(host-window "wait" 200)
(host-window "tell" "enabled")
(host-window)
(told)                                                    ;=> (nil nil T)
; The title and the meter
(kv_kv-setAcadWindowText "Plan of the cellar")
(host-window "tell" "title")
(host-window)
(told)                                                    ;=> ("Plan of the cellar")
(acedSetStatusBarProgressMeter "Reading" 0 80)
(acedSetStatusBarProgressMeterPos 20)
(host-window "tell" "progress")
(host-window)
(acedRestoreStatusBar)
(host-window "tell" "progress")
(host-window)
(told)                                                    ;=> ("20 of 80" "")
; Whatever one typed line of LISP does is one step for U.
(entmake '((0 . "POINT") (10 0.0 0.0 0.0)))
(setq before (entlast))
(host-window "type" "(foreach x '(1.0 2.0 3.0) (entmake (list '(0 . \"POINT\") (list 10 x 0.0 0.0))) (setvar \"CLAYER\" \"0\"))\n")
(host-window)
(eq (entlast) before)                                     ;=> nil
(host-window "menu" "Undo")
(host-window)
(eq (entlast) before)                                     ;=> T
(entdel before)
; What the cursor is at has no minus before a zero, here where its z is a hair below.
(host-window "move" '(-0.00001 0.0))
(host-window "tell" "cursor")
(host-window)
(vl-string-search "-0.0000" (car (told)))                 ;=> nil
; The list of layers grows with its names, within bounds; beyond them a name ends in dots.
(setq long (apply 'strcat (mapcar '(lambda (x) "SUPPLY-AIR-") '(1 2 3 4 5 6 7 8))))
(command "LAYER" "N" "H-SA-DUCT-LINE" "")
(host-window "wait" 1)
(host-window "tell" "layers")
(host-window)
(command "LAYER" "N" long "")
(host-window "wait" 1)
(host-window "tell" "layers")
(host-window)
(setq shown (told))
(wcmatch (car shown) "*|H-SA-DUCT-LINE")             ;=> T
(wcmatch (cadr shown) "*|H-SA-DUCT-LINE|SUPPLY-AIR-*\U+2026")   ;=> T
; Boxes come to the script before they come to a person.
(host-answer "OK")
(alert "Ready")
(length (host-boxes))                                     ;=> 1
; A dialog over the window: it keeps the hand from the window, and Escape cancels it.
(host-window "click" '(1.0 1.0))
(host-window "menu" "Undo")
(host-window "close")
(host-window "key" "Escape")
(acad_colordlg 1)                                         ;=> nil
(told)                                                    ;=> ("a dialog is open: click" "a dialog is open: menu")
; Long LISP looks about: Escape ends it.
(host-window "busy key" "Escape")
(vl-catch-all-error-message (vl-catch-all-apply '(lambda () (while T (+ 1 1))))) ;=> "Function cancelled"
(+ 1 1)                                                   ;=> 2
; Layers: on, frozen, locked, current, by clicks on the list; each is a step for undo.
(command "LAYER" "N" "A-1" "")
(defun flags () (cdr (assoc 70 (tblsearch "LAYER" "A-1"))))
(host-window "layer" "A-1" 3)
(host-window)
(flags)                                                   ;=> 4
(host-window "layer" "A-1" 2)
(host-window)
(flags)                                                   ;=> 5
(host-window "menu" "Undo")
(host-window)
(flags)                                                   ;=> 4
(host-window "layer" "A-1" 1)
(host-window)
(minusp (cdr (assoc 62 (tblsearch "LAYER" "A-1"))))       ;=> T
(host-window "layer" "A-1" 0)
(host-window)
(getvar "CLAYER")                                         ;=> "A-1"
; Saving by the menu asks for a name once.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/saved.dwg"))
(host-file path)
(host-window "menu" "Save")
(host-window "tell" "tabs")
(host-window)
(= (findfile path) path)                                  ;=> T
(told)                                                    ;=> ("[saved.dwg] Second.dwg")
; Closing asks for changed drawings; "Cancel" keeps the window, "No" ends the prompt and every later one.
(entmake '((0 . "POINT") (10 1.0 2.0 0.0)))
(host-answer "CANCEL")
(host-window "close")
(host-window "type" "5\n")
(getint "\nHow many: ")                                   ;=> 5
(host-answer "NO" "NO")
(host-window "close")
(host-window "type" "5\n")
(vl-catch-all-error-message (vl-catch-all-apply '(lambda () (getint "\nHow many: ")))) ;=> "Function cancelled"
(host-window "type" "5\n")
(vl-catch-all-error-message (vl-catch-all-apply '(lambda () (getint "\nHow many: ")))) ;=> "Function cancelled"
