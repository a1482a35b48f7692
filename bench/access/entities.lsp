; What LISP's access to a drawing costs, in microseconds for each entity: making, reading, changing, walking,
; and letting filters judge all of them.

(setq count 200000)

(defun report (what started each)
  (princ (strcat what ": " (rtos (/ (* 1000.0 (- (getvar "MILLISECS") started)) each) 2 3) " us\n")))

(defun make-all (/ i)
  (setq i 0)
  (repeat count
    (entmakex (list '(0 . "LINE") (cons 8 (strcat "LAYER-" (itoa (rem i 50)))) (cons 62 (1+ (rem i 7)))
                    (list 10 (float i) 0.0 0.0) (list 11 (float i) (float (rem i 100)) 0.0)))
    (setq i (1+ i))))

(defun walk (work / e)
  (setq e (entnext))
  (while e (work e) (setq e (entnext e))))

(setq started (getvar "MILLISECS"))
(make-all)
(report "entmakex of a line" started count)

(setq started (getvar "MILLISECS"))
(walk (lambda (e) nil))
(report "entnext" started count)

(setq started (getvar "MILLISECS"))
(walk (lambda (e) (entget e)))
(report "entnext and entget" started count)

(setq started (getvar "MILLISECS"))
(walk (lambda (e) (entmod (list (cons -1 e) '(62 . 1)))))
(report "entnext and entmod of a colour" started count)

(foreach filter (list nil '((0 . "CIRCLE")) '((8 . "LAYER-1*,LAYER-2")) '((0 . "LINE") (8 . "LAYER-7") (410 . "Model"))
                      '((-4 . "<OR") (62 . 3) (8 . "*-9") (-4 . "OR>")) '((-3 ("APP"))) '((-4 . ">,*,*") (10 5000.0 0.0 0.0)))
  (setq started (getvar "MILLISECS") set (ssget "X" filter))
  (report (strcat "ssget \"X\" " (vl-prin1-to-string filter) ", " (itoa (if set (sslength set) 0)) " hits") started count))
(princ)
