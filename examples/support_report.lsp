; A support report as an application asks for it. Without a window the dialog is filled by a script; at a display, leave
; the two calls of host-dialog and host-answer out, and fill it by hand.

; Who the user is, for the first lines of the mail.
(defun util-supportIdentification () (list "Licence 4711" "Example Office"))
; The report's archive is to be shown to the user.
(defun startapp (command) (princ (strcat "\nShow: " command)))

(setq folder (getenv "ZARBO_REPORT"))
(setq file (strcat folder "/notes.txt"))
(progn (setq f (open file "w")) (write-line "what the drawing office found" f) (close f))

(defun report (/ fill)
  (setq fill (list (list "set" 1030 "Ann Bee") (list "set" 1029 "ann@office.example")
                   (list "set" 1032 "ann@office.example") (list "set" 1028 "555 0100")
                   (list "set" 1031 "The riser is missing on level 2. It was there yesterday.")))
  (apply 'host-dialog (append fill (list (list "check" 1023 desktop) (list "click" 1))))
  (host-answer "OK")
  (kv_kv-submitBug 1 "Plan 7" (strcat folder "/") "Sent by the example." (list file))
  (foreach box (host-boxes) (princ (strcat "\n[" (car box) "] " (cadr box)))))

(setq desktop nil)
(report)
(setq desktop T)
(report)
(princ "\n")
