; Choosing with the mouse: for prompts, and before a command.
(defun told () (host-window-log))
(defun chosen () (if (ssget "_I") (sslength (ssget "_I")) 0))
(defun line (a b) (entmakex (list '(0 . "LINE") (cons 10 a) (cons 11 b))))
(host-window "size" 900 700)
(host-window)
(setvar "OSMODE" 0)
(setq a (line '(10.0 10.0 0.0) '(30.0 10.0 0.0)) b (line '(10.0 30.0 0.0) '(30.0 30.0 0.0)) c (line '(60.0 10.0 0.0) '(60.0 60.0 0.0)))
(command "ZOOM" "C" '(40 40) 100.0)
(host-output)
; Of a prompt: a pick, a window by two clicks to the right, a crossing window drawn to the left
(host-window "click" '(20.0 10.0))
(host-window "key" "Return")
(sslength (ssget))                                        ;=> 1
(host-window "click" '(5.0 5.0))
(host-window "click" '(40.0 40.0))
(host-window "click" '(0.0 0.0) "right")
(sslength (ssget))                                        ;=> 2
(host-window "drag" '(65.0 35.0) '(25.0 5.0))
(host-window "key" "Return")
(sslength (ssget))                                        ;=> 3
(host-window "click" '(20.0 30.0))
(eq (car (entsel)) b)                                     ;=> T
(host-window "click" '(45.0 45.0))
(entsel)                                                  ;=> nil
; Before a command: clicks add, shift takes away, a window adds, Escape ends the choice
(host-window "click" '(20.0 10.0))
(host-window "click" '(60.0 40.0))
(host-window)
(chosen)                                                  ;=> 2
(host-window "click" '(20.0 10.0) "shift")
(host-window)
(chosen)                                                  ;=> 1
(host-window "drag" '(5.0 5.0) '(40.0 40.0))
(host-window)
(chosen)                                                  ;=> 3
(host-window "key" "Escape")
(host-window)
(chosen)                                                  ;=> 0
; What was chosen is the command's, and Delete erases it; undo and redo by the menus.
(host-window "click" '(20.0 10.0))
(host-window "key" "Delete")
(host-window)
(entget a)                                                ;=> nil
(chosen)                                                  ;=> 0
(host-window "menu" "Undo")
(host-window)
(cdr (assoc 10 (entget a)))                               ;=> (10.0 10.0 0.0)
(host-window "menu" "Redo")
(host-window)
(entget a)                                                ;=> nil
(host-window "menu" "Undo")
; A grip: taken hold of, and put elsewhere
(host-window "click" '(20.0 10.0))
(host-window "click" '(30.0 10.0))
(host-window "type" "30,20\n")
(host-window)
(cdr (assoc 11 (entget a)))                               ;=> (30.0 20.0 0.0)
(host-window "key" "Escape")
(host-window "menu" "Undo")
(host-window)
(cdr (assoc 11 (entget a)))                               ;=> (30.0 10.0 0.0)
; While a prompt waits that takes no choice, clicks choose nothing.
(host-window "click" '(20.0 10.0))
(host-window "type" "5\n")
(getint "\nHow many: ")                                   ;=> 5
(chosen)                                                  ;=> 0
