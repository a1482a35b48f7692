; What programs that measure in LISP share: rows for bench/all.

(defun milliseconds (work / start) (setq start (getvar "MILLISECS")) (work) (- (getvar "MILLISECS") start))
(defun words (numbers) (apply 'strcat (mapcar '(lambda (n) (strcat (rtos n 2 4) " ")) numbers)))
(defun print-row (what unit yardstick theirs ours aim)
  (princ (strcat "row: " what " | " unit " | " (if yardstick yardstick "-") " | " (if theirs (words theirs) "-") " | "
                 (words ours) " | " (if aim (rtos aim 2 2) "-") "\n")))

; Both by turns, after one time to warm up; each does as many things as `rounds`, and `nothing`, a loop without
; them, is taken off. Microseconds for one.
(defun row (what yardstick their-work our-work nothing rounds aim / theirs ours none each)
  (setq none (if nothing (apply 'min (mapcar '(lambda (k) (milliseconds nothing)) '(1 2 3))) 0.0)
        each (lambda (ms) (/ (* 1000.0 (max 0.001 (- ms none))) rounds)))
  (if their-work (their-work))
  (our-work)
  (repeat 5
    (if their-work (setq theirs (cons (each (milliseconds their-work)) theirs)))
    (setq ours (cons (each (milliseconds our-work)) ours)))
  (print-row what "us" yardstick theirs ours aim))
