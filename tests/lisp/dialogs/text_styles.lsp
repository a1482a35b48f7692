; The text styles of a database of its own, and of the drawing's.
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(defun stored (/ rows)
  (zb_connect file "r")
  (setq rows (zb_sql "select sKey, sStyleName, dHeight, dScaleFactor from tblTextStyle order by sKey"))
  (zb_close_db)
  rows)
(setq before (stored))
; Without the application's function no row is shown, and nothing is written.
(host-dialog '("title") '("grid" 1048) '("get" 1048) '("click" 1))
(kv_kv-customizeTextStyles file nil)                     ;=> nil
(host-dialog-log)
;=> ("Text Styles" (("Text Style Key" "ixTextStyle" "Text Style" "Height" "Scale Factor")) (-1 -1))
(equal before (stored))                                  ;=> T
(setq hidden '("Note") asked nil)
(defun util-showTextStyle (key) (setq asked (cons key asked)) (not (member key hidden)))
(host-dialog '("grid" 1048) '("get" 1048))
(kv_kv-customizeTextStyles file nil)
(setq log (host-dialog-log))
(cadr log)                                               ;=> (1 2)
(mapcar 'car (car log))
; Texts of numbers without zeros at the end, empty for null
(mapcar '(lambda (key) (cddr (assoc key (car log)))) '("Default" "Note Title"))
;=> (("Standard" "0.0938" "1") ("" "0.125" ""))
(length asked)
; Start at a key: exact, shown ones only
(host-dialog '("get" 1048) '("focus"))
(kv_kv-customizeTextStyles file "Note Title")
(host-dialog-log)
(host-dialog '("get" 1048))
(kv_kv-customizeTextStyles file "Note")
(host-dialog-log)                                        ;=> ((1 2))
(host-dialog '("get" 1048))
(kv_kv-customizeTextStyles file "note title")
(host-dialog-log)                                        ;=> ((1 2))
; The key can't be edited. OK writes each shown row: empty as null, apostrophes doubled.
(defun row-of (key / grid place)
  (host-dialog '("grid" 1048))
  (kv_kv-customizeTextStyles file nil)
  (setq grid (car (host-dialog-log)))
  (- (length grid) (length (member (assoc key grid) grid))))
(setq title (row-of "Note Title"))
(host-dialog (list "cell" 1048 title 0 "other") (list "cell" 1048 title 2 "O'Hare  ") (list "cell" 1048 title 3 "")
             (list "cell" 1048 title 4 "0.85") '("click" 1))
(kv_kv-customizeTextStyles file nil)
(length (host-dialog-log))                               ;=> 1
(defun changes (/ changed) 
  (foreach pair (mapcar 'list before (stored)) (if (/= (car pair) (cadr pair)) (setq changed (cons (cadr pair) changed))))
  (reverse changed))
; What is shown with four decimals is written with them.
(changes)
;=> ((("sKey" . "Default") ("sStyleName" . "Standard") ("dHeight" . 0.0938) ("dScaleFactor" . 1.0)) (("sKey" . "Note Title") ("sStyleName" . "O'Hare") ("dHeight") ("dScaleFactor" . 0.85)))
; A text in a number's cell leaves its row as it was, and says nothing.
(host-output)
(host-dialog (list "cell" 1048 title 2 "New") (list "cell" 1048 title 3 "high") '("click" 1))
(kv_kv-customizeTextStyles file nil)
(host-output)                                            ;=> ""
(cdr (assoc "sStyleName" (cadr (changes))))              ;=> "O'Hare"
; The default row must have style and height: of one row the first is told, and nothing is written.
(setq default (row-of "Default"))
(host-boxes)
(host-answer "OK" "OK")
(host-dialog (list "cell" 1048 default 2 "  ") (list "cell" 1048 default 3 "") '("click" 1) '("get" 1048)
             (list "cell" 1048 default 2 "Standard") '("click" 1) '("get" 1048) '("click" 2))
(kv_kv-customizeTextStyles file nil)
(host-dialog-log)
(mapcar 'cadr (host-boxes))
;=> ("DEFAULT \"Text Style\" must have a value." "DEFAULT \"Height\" must have a value.")
(length (changes))                                       ;=> 2
; By the drawing's connection, which stays open
(zb_connect file "w")
(host-dialog (list "cell" 1048 title 3 "0.25") '("click" 1))
(kv_kv-customizeTextStyles nil nil)
(zb_mdb)
(cdr (assoc "dHeight" (car (zb_sql "select dHeight from tblTextStyle where sKey = 'Note Title'"))))   ;=> 0.25
(zb_close_db)
; Read-only, missing, and no database at all
(kv_kv-customizeTextStyles nil nil)                      ;=> nil
(host-dialog-log)
(progn (host-output) (kv_kv-customizeTextStyles (strcat file ".missing") nil) (/= (host-output) ""))   ;=> T
