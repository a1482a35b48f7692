; What LISP's access to a drawing costs for each entity, and how that grows with their number: making, reading,
; changing, walking, and letting filters judge all of them.
(load "bench/rows.lsp")

(defun erase-all (/ e) (while (setq e (entlast)) (entdel e)))
(defun make (n / i)
  (setq i 0)
  (repeat n
    (entmakex (list '(0 . "LINE") (cons 8 (strcat "LAYER-" (itoa (rem i 50)))) (cons 62 (1+ (rem i 7)))
                    (list 10 (float i) 0.0 0.0) (list 11 (float i) (float (rem i 100)) 0.0)))
    (setq i (1+ i))))
(defun walk (work / e) (setq e (entnext)) (while e (work e) (setq e (entnext e))))

(setq works '(("entnext" (walk (lambda (e) nil)))
              ("entnext and entget" (walk (lambda (e) (entget e))))
              ("entnext and entmod" (walk (lambda (e) (entmod (list (cons -1 e) '(62 . 1))))))
              ("ssget X" (ssget "X"))
              ("ssget X of a layer and colour" (ssget "X" '((8 . "LAYER-7") (62 . 1)))))
      most 500000)

; Smaller drawings are gone over as many times as makes up the largest.
(defun costs (n / started)
  (erase-all)
  (setq started (getvar "MILLISECS"))
  (make n)
  (cons (/ (* 1000.0 (- (getvar "MILLISECS") started)) n)
        (mapcar '(lambda (each / once)
                   (setq once (eval (list 'lambda nil (cadr each))))
                   (/ (* 1000.0 (milliseconds (lambda () (repeat (/ most n) (once))))) most))
                works)))

(setq sizes '((10000 . "10 thousand") (100000 . "100 thousand") (500000 . "half a million"))
      taken (mapcar '(lambda (size) (list (costs (car size)) (costs (car size)))) sizes)
      few (car taken))
(foreach size (cdr sizes)
  (setq taken (cdr taken) k 0)
  (foreach name (cons "entmakex of a line" (mapcar 'car works))
    (print-row (strcat name ", each of " (cdr size)) "us" "each of 10 thousand"
               (mapcar '(lambda (times) (nth k times)) few) (mapcar '(lambda (times) (nth k times)) (car taken)) 1.5)
    (setq k (1+ k))))
(princ)
