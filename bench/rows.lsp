; What programs that measure in LISP share: rows for bench/all.

(defun milliseconds (work / start) (setq start (getvar "MILLISECS")) (work) (- (getvar "MILLISECS") start))
(defun words (numbers) (apply 'strcat (mapcar '(lambda (n) (strcat (rtos n 2 4) " ")) numbers)))
(defun print-row (what unit yardstick theirs ours aim)
  (princ (strcat "row: " what " | " unit " | " (if yardstick yardstick "-") " | " (if theirs (words theirs) "-") " | "
                 (words ours) " | " (if aim (rtos aim 2 2) "-") "\n")))

; Microseconds for one of the things of which `work` does as many as `rounds`. The clock tells milliseconds, so it is
; done again and again until some have passed.
(defun cost (work rounds / times passed)
  (setq times 1)
  (while (< (setq passed (milliseconds (list 'lambda nil (list 'repeat times (list work))))) 60) (setq times (* 2 times)))
  (/ (* 1000.0 passed) (* (float times) rounds)))

; Both by turns, after one time to warm up; `nothing`, a loop without the things, is taken off.
(defun row (what yardstick their-work our-work nothing rounds aim / theirs ours none)
  (setq none (if nothing (min (cost nothing rounds) (cost nothing rounds)) 0.0))
  (if their-work (their-work))
  (our-work)
  (repeat 5
    (if their-work (setq theirs (cons (max 0.0001 (- (cost their-work rounds) none)) theirs)))
    (setq ours (cons (max 0.0001 (- (cost our-work rounds) none)) ours)))
  (print-row what "us" yardstick theirs ours aim))
