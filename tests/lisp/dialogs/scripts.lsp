; What isn't an action is refused at once.
(host-dialog '("press" 1))  ;=> ; error: no action of a dialog: press
(host-dialog '("set" 1036))  ;=> ; error: set: too few arguments
(host-dialog '("click" "1"))  ;=> ; error: click: wrong type of arguments
(host-dialog '("title" 1))  ;=> ; error: title: too many arguments
(host-dialog '(1 2))  ;=> ; error: no action of a dialog: (1 2)
(host-dialog "title")  ;=> ; error: no action of a dialog: "title"

; What can't be done is a line in the log; the rest goes on, and what a closed dialog didn't use is dropped.
(host-dialog '("click" 77) '("get" 77) '("set" 1 "x") '("select" 1036 0) '("grid" 1036) '("check" 1 T) '("key" "F9")
             '("click" 2) '("title"))
(kv_kv-safeContinue "T" "m" "x")
(foreach line (host-dialog-log) (princ line) (terpri))
;| T: click 77: there is no such control
;| T: get 77: there is no such control
;| T: set 1: the control is of another kind
;| T: select 1036 0: the control is of another kind
;| T: grid 1036: the control is of another kind
;| T: check 1: the control is of another kind
;| T: key F9: nothing happened

; Each call is one dialog.
(host-dialog '("title"))
(host-dialog '("set" 1036 "b") '("click" 1))
(kv_kv-safeContinue "One" "m" "a")  ;=> nil
(kv_kv-safeContinue "Two" "m" "b")  ;=> T
(host-dialog-log)  ;=> ("One")

; Pictures, at two sizes and in two themes.
(setq file (strcat (getenv "ZARBO_SCRATCH") "/shot.png"))
(host-dialog (list "shot" file) (list "shot" file 600 400 "dark") (list "shot" "/nowhere/at/all.png"))
(EditUserOptions "HVAC")
(host-dialog-log)  ;=> ("Korvane User Settings: shot /nowhere/at/all.png: the file can't be written")
(> (vl-file-size file) 1000)  ;=> T
