; Keys are compared by value, as the column's type has it.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/keys.mdb"))
(zb_create_db path)                                  ;=> T
(zb_connect path)                                    ;=> T
(setq columns '(("n" . "counter") ("t" . "text(30)") ("l" . "long") ("s" . "single") ("c" . "currency") ("d" . "date") ("y" . "yesno") ("g" . "guid")))
(setq indexes '(("n" . "index primary") ("t" . "index") ("l" . "index") ("s" . "index") ("c" . "index") ("d" . "index") ("y" . "index") ("g" . "index") ("tl" . "index(t, l DESC)")))
(zb_create_table "K" (append columns indexes))       ;=> "K"
(zb_table "k")                                       ;=> "k"
(defun add (text number) (cdr (car (zb_append (list (cons "t" text) (cons "l" number))))))
(defun found (index key) (zb_table "K" index) (cdr (car (zb_seek key))))
(defun walk (index / rows record) (zb_table "K" index) (setq record (zb_top)) (while record (setq rows (cons (cdr (car record)) rows) record (zb_skip))) (reverse rows))
(zb_append '(("t" . "Öl") ("l" . 7) ("s" . 0.1) ("c" . 12.3456) ("d" . "2024-02-29") ("y" . T) ("g" . "4D6FDF05-A48B-43B0-B640-64B299548BC4")))   ;=> (("n" . 1) ("t" . "Öl") ("l" . 7) ("s" . 0.1) ("c" . 12.3456) ("d" . "2/29/2024") ("y" . -1) ("g" . "{4D6FDF05-A48B-43B0-B640-64B299548BC4}"))
; Letters of every script are equal in both cases.
(add "ДАТЧИК" 1)                                     ;=> 2
(add "σωλήνας" 2)                                    ;=> 3
(add "åben" nil)                                     ;=> 4
(add nil 5)                                          ;=> 5
(add "öL" 9)                                         ;=> 6
(mapcar '(lambda (each) (found "t" each)) '("öl" "ÖL" "датчик" "ΣΩΛΉΝΑΣ" "ÅBEN" "Ol" "ö"))    ;=> (1 1 2 3 4 nil nil)
(walk "t")                                           ;=> (5 4 1 6 3 2)
; Ties go by the other columns, descending where the index says so, and then by row.
(walk "tl")                                          ;=> (5 4 6 1 3 2)
; A number is found whatever its type, and not when it lies between two values.
(mapcar '(lambda (each) (found "l" each)) '(7 7.0 "7" 7.5 "7.0" 1e12))    ;=> (1 1 1 nil 1 nil)
(mapcar '(lambda (each) (found "s" each)) '(0.1 "0.1" 0.2))               ;=> (1 1 nil)
(mapcar '(lambda (each) (found "c" each)) '(12.3456 "12.3456" 12.3457))   ;=> (1 1 nil)
(mapcar '(lambda (each) (found "d" each)) '("2024-02-29" "2/29/2024" 45351 "2024-03-01"))    ;=> (1 1 1 nil)
(mapcar '(lambda (each) (found "y" each)) '(T -1 "True" 0))               ;=> (1 1 1 2)
(found "g" "{4d6fdf05-a48b-43b0-b640-64b299548bc4}")                      ;=> 1
; Null is found by nil, where nil is one of several keys.
(zb_table "K" "tl")
(cdr (car (zb_seek nil 5)))                          ;=> 5
(cdr (car (zb_seek "ÅBEN" nil)))                     ;=> 4
(zb_seek nil 6)                                      ;=> nil
(cdr (car (zb_seek '("Öl" 9))))                      ;=> 6
; A key that can't be a value of the column is an error, and the table stays as it was.
(defun problem (index key) (zb_resetLastError) (found index key) (substr (zb_lastError) 1 6))
(mapcar '(lambda (each) (problem (car each) (cadr each))) '(("l" "seven") ("d" "soon") ("y" "maybe") ("g" "{1}") ("s" "x") ("c" "y")))    ;=> ("(3421)" "(3421)" "(3421)" "(3421)" "(3421)" "(3421)")
; So is a value that the column can't hold, or a name that the table doesn't have.
(defun refused (field value) (zb_resetLastError) (zb_append (list (cons field value))) (substr (zb_lastError) 1 6))
(mapcar '(lambda (each) (refused (car each) (cadr each))) '(("l" 3e9) ("l" "x") ("c" 1e16) ("s" 1e39) ("d" "no") ("d" 1e9) ("y" "?") ("g" "?") ("t" "0123456789012345678901234567890") ("zz" 1) ("n" 1)))    ;=> ("(3349)" "(3421)" "(3349)" "(3349)" "(3421)" "(3349)" "(3421)" "(3421)" "(3163)" "(3265)" "(3022)")
(zb_count)                                           ;=> 6
; Counters go on behind refused rows, deleted rows and numbers that were given by hand.
(add "x" 1)                                          ;=> 7
(zb_delete)                                          ;=> T
(add "y" 1)                                          ;=> 8
(cdr (car (zb_append '(("n" . 20) ("t" . "z")))))    ;=> 20
(add "w" 1)                                          ;=> 21
(zb_replace '(("n" . 22)))                           ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3164)"
; Amounts go as far as their type does.
(defun stored (amount) (cdr (assoc "c" (zb_append (list (cons "c" amount))))))
(mapcar '(lambda (each) (if (setq back (stored each)) (= back 922337203685477.0))) '(922337203685477.0 "922337203685477" 922337203685478.0))  ;=> (T T nil)
(zb_lastError)                                       ;=> "(3349) The number is too large for the field 'c'."
(= (stored -922337203685477.0) -922337203685477.0)   ;=> T
(= (cdr (assoc "c" (progn (zb_table "K" "c") (zb_seek 922337203685477.0)))) 922337203685477.0)   ;=> T
