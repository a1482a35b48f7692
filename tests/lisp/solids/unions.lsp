;;; Unions and explosions of what may not be changed or isn't there, and callbacks that go their own ways.
(load "words.lsp")
(defun bar (x) (kv_kv-drawTripleCenter nil 0 (run (list x 0 0) (list (+ x 10) 0 0) 4.0 4.0 "")))
(defun bodies (e) (get "bodies" (host-solid e)))
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "LOCKED") (70 . 4)))
(defun locked (e / data) (setq data (entget e)) (entmod (subst '(8 . "LOCKED") (assoc 8 data) data)) e)
(setq a (bar 0) b (bar 5) fixed (locked (bar 5)) line (entmakex '((0 . "LINE") (10 0 0 0) (11 1 1 0))) gone (bar 5))
(entdel gone)
(defun united (first second / code)
  (setq code (if (refused (list 'kv_kv-tripleUnion first second)) "refused" "done"))
  (list code (bodies a) (volume a) (if (entget b) T) (if (entget fixed) T)))
;; Itself, locked, erased, of another class: nothing is changed, and no entity is left open.
(mapcar '(lambda (pair) (united (car pair) (cadr pair))) (list (list a a) (list a fixed) (list fixed a) (list a gone) (list gone a) (list a line) (list line a)))
;=> (("refused" 1 160.0 T T) ("refused" 1 160.0 T T) ("refused" 1 160.0 T T) ("refused" 1 160.0 T T) ("refused" 1 160.0 T T) ("refused" 1 160.0 T T) ("refused" 1 160.0 T T))
(mapcar '(lambda (e) (refused (list 'kv_kv-explodeSolid e))) (list fixed gone line))  ;=> (T T T)
(setq before (entities))
(kv_kv-explodeSolid)                                         ;=> nil
(= before (entities))                                        ;=> T
(united a b)                                                 ;=> ("done" 1 240.0 nil T)
;; An undone union has both again.
(setvar "CMDECHO" 0)
(setq b (bar 10))
(progn (command "UNDO" "BEGIN") (kv_kv-tripleUnion a b) (command "UNDO" "END") (command "U") (list (volume a) (volume b)))  ;=> (240.0 160.0)

;; A callback that is missing, fails or answers nonsense leaves the points; a place out of range refuses them.
(setq r (run '(0 0 0) '(10 0 0) 4.0 4.0 ""))
(defun answered (answer / made)
  (setq before (entities) made (kv_kv-drawTripleCenter T 0 r))
  (if made (list (car (box made)) (cadr (box made))) (= before (entities))))
(setq plain (box (kv_kv-drawTripleCenter nil 0 r)))
(equal (answered nil) plain)                                 ;=> T
(foreach body '("nonsense" (/ 1 0) (1.0 2.0) 5 nil (exit) (1 2 3 4))
  (eval (list 'defun 'convert_rp_dp '(point mode) (if (and (listp body) (numberp (car body))) (list 'quote body) body)))
  (princ (equal (answered nil) plain)))
;| TTTTTTT
(defun convert_rp_dp (point mode) '(5.0 5.0 5.0))
(answered nil)                                               ;=> T
(defun convert_rp_dp (point mode) '(1e300 1e300 -1e300))
(answered nil)                                               ;=> T
(defun convert_rp_dp (point mode) (list mode (cadr point) (* 2 (car point))))
(answered nil)                                               ;=> (("-2.0000" "-2.0000" "0.0000") ("2.0000" "2.0000" "20.0000"))
;; One that draws and erases meanwhile
(defun convert_rp_dp (point mode) (bar 100) (entdel (entlast)) point)
(equal (answered nil) plain)                                 ;=> T
(equal (answered nil) plain)                                 ;=> T
;; Nothing half made stays where a fitting is refused.
(defun convert_rp_dp (point mode) (mapcar '(lambda (x) (* 1e200 x)) point))
(setq before (entities) side (run '(10 0 0) '(10 50 0) 4.0 4.0 "") small (run '(10 0 0) '(10 50 0) 2.0 2.0 "RD"))
(list (kv_kv-drawTripleElbow T 0 T 0.0 r side) (kv_kv-drawTripleElbow T 0 nil 2.0 r small) (kv_kv-drawTripleWye T 0 nil 0.0 r side small)
      (kv_kv-drawTripleTakeoff T 0 nil 0.0 r small side) (kv_kv-drawTripleCenter T 0 r))  ;=> (nil nil nil nil nil)
(= before (entities))                                        ;=> T

;; 1,000 bodies in one entity
(defun joined (solids / half)
  (if (cdr solids)
    (progn
      (setq half nil)
      (repeat (/ (length solids) 2) (setq half (cons (car solids) half) solids (cdr solids)))
      (setq half (joined half) solids (joined solids))
      (kv_kv-tripleUnion half solids)
      half)
    (car solids)))
(setq i 0 all nil)
(repeat 1000 (setq all (cons (bar (* 12 i)) all) i (1+ i)))
(setq e (joined all))
(list (bodies e) (near (volume e) 160000.0) (get "closed" (host-solid e)))  ;=> (1000 T T)
(setq i 0 all nil)
(repeat 100 (setq all (cons (bar (* 12 i)) all) i (1+ i)))
(setq e (joined all) bridge (kv_kv-drawTripleCenter nil 0 (run '(-5 0 0) '(1300 0 0) 2.0 2.0 "")))
(progn (kv_kv-tripleUnion e bridge) (list (bodies e) (get "closed" (host-solid e))))  ;=> (1 T)
(near (volume e) (+ 16000.0 (* 4.0 (- 1305.0 1000.0))))      ;=> T
