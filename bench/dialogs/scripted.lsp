; What a dialog costs a script: opened, a cell edited, its grid read, cancelled; beside a box that is answered, and a
; plain call of the module. Prints microseconds for each.
(setq rounds 2000)
(defun spent (work / start) (setq start (getvar "MILLISECS")) (work) (- (getvar "MILLISECS") start))
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
(defun plain () (repeat rounds (kv::pow 2.0 3.0)))
(defun best (work / least)
  (repeat 5 (setq least (if least (min least (spent work)) (spent work))))
  (rtos (/ (* least 1000.0) rounds) 2 2))
(princ (strcat "user settings " (best settings) " us\nsafe continue " (best word) " us\nmessage box   " (best box)
               " us\nplain call    " (best plain) " us\n"))
(princ)
