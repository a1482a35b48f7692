; What a dialog costs a script beside a message box that is answered: opened, a cell edited, its grid read,
; cancelled; and a small one.
(load "bench/rows.lsp")
(setq rounds 30)
(defun settings ()
  (repeat rounds
    (host-dialog '("cell" 1048 2 1 "Ada") '("grid" 1048) '("click" 2))
    (EditUserOptions "HVAC")
    (host-dialog-log)))
(defun word ()
  (repeat rounds
    (host-dialog '("set" 1036 "yes") '("click" 1))
    (kv_kv-safeContinue "Title" "All of it goes." "yes")))
(defun box () (repeat rounds (host-answer "OK") (zb_message_box "Caption" "Text" '("OK")) (host-boxes)))
(row "the user's settings, edited by a script" "a message box" box settings nil rounds nil)
(row "a word of consent, typed by a script" "a message box" box word nil rounds 10)
(princ)
