; Loops that programs write, each over a number of things and over twice as many: a loop whose rounds cost the
; same takes twice as long, one that looks at everything in every round four times as long.
(load "bench/rows.lsp")

(defun points (n) (repeat n (entmakex '((0 . "POINT") (10 0.0 0.0 0.0)))))
(defun erase-all (/ e) (while (setq e (entlast)) (entdel e)))

(defun delete-from-front (n)
  (points n)
  (setq set (ssget "X"))
  (lambda () (repeat n (ssdel (ssname set 0) set))))

(defun delete-every-second (n)
  (points (* 2 n))
  (setq set (ssget "X"))
  (lambda () (setq i 0) (repeat n (ssdel (ssname set i) set) (setq i (1+ i)))))

(defun erase-first (n) (points n) (lambda () (while (setq e (entnext)) (entdel e))))
(defun erase-last (n) (points n) (lambda () (while (setq e (entlast)) (entdel e))))
(defun erase-second (n) (points n) (setq e (entnext)) (lambda () (repeat (1- n) (entdel (entnext e)))))

(defun walk-dictionary (n)
  (setq d (dictadd (namedobjdict) (strcat "GROWTH" (itoa (setq dictionaries (1+ dictionaries))))
                   (entmakex '((0 . "DICTIONARY") (100 . "AcDbDictionary")))) i 0)
  (repeat n (dictadd d (itoa (setq i (1+ i))) (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "x")))))
  (lambda () (dictnext d T) (while (dictnext d))))

(defun lengthen-text (n) (setq text "") (lambda () (repeat n (setq text (strcat text "abc,")))))
(defun lengthen-and-look (n) (setq text "") (lambda () (while (< (strlen text) (* 4 n)) (setq text (strcat text "abc,")))))

; Variables are the caller's, so that a loop sees those of its preparation while it runs.
(defun time-of (prepare n / set e d i text loop)
  (erase-all)
  (setq loop (apply prepare (list n)))
  (milliseconds loop))

(setq dictionaries 0)
(foreach each '((delete-from-front 100000) (delete-every-second 100000) (erase-first 50000) (erase-last 50000)
                (erase-second 50000) (walk-dictionary 20000) (lengthen-text 200000) (lengthen-and-look 200000))
  (setq once nil twice nil n (cadr each))
  (repeat 3
    (setq once (cons (time-of (car each) n) once)
          twice (cons (time-of (car each) (* 2 n)) twice)))
  (print-row (strcat (strcase (vl-symbol-name (car each)) T) ", " (itoa (* 2 n))) "ms" (strcat "over " (itoa n)) once twice 3))
(princ)
