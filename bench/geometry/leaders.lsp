; What a leader with a block costs from LISP beside a line made by its list. Prints microseconds for each.
(setq rounds 20000)
(defun spent (work / start) (setq start (getvar "MILLISECS")) (work) (- (getvar "MILLISECS") start))
(entmake '((0 . "BLOCK") (2 . "Tip") (70 . 0) (10 0 0 0)))
(entmake '((0 . "LINE") (8 . "0") (10 0 0 0) (11 1 0 0)))
(entmake '((0 . "ENDBLK")))
(defun lines () (repeat rounds (entmakex '((0 . "LINE") (8 . "0") (10 0 0 0) (11 5 5 0)))))
(defun leaders () (repeat rounds (kv_kv-leader-insert '((0 0 0) (5 5 0) (10 5 0)) "0" "Tip" 0.1)))
(setq line (spent lines) leader (spent leaders))
(defun us (milliseconds) (rtos (/ (* milliseconds 1000.0) rounds) 2 1))
(princ (strcat "line by entmakex    " (us line) " us\nkv_kv-leader-insert " (us leader) " us, "
               (rtos (/ (float leader) line) 2 2) " times the line\n"))
(princ)
