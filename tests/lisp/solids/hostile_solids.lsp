;;; Bad input: a refusal, nothing half made, and the program goes on.
(load "words.lsp")
(setq before (entities))
(setq huge 1e300 tiny 1e-300)
(defun try (call / answer)
  (setq answer (vl-catch-all-apply (car call) (cdr call)))
  (cond ((vl-catch-all-error-p answer) "error") (answer "made") (T "nil")))
(setq points '((0 0 0) (1e300 0 0) (1e9 1e9 1e9) (0 0 1e-300)))
(setq sizes '(0.0 -5.0 1e300 1e-300 1e9))
;; Every function on runs of every kind of nonsense.
(setq runs (apply 'append (mapcar '(lambda (from) (apply 'append (mapcar '(lambda (to) (mapcar '(lambda (size) (run from to size 10.0 "RD")) sizes)) points))) points)))
(length runs)                                                ;=> 80
(foreach a runs
  (try (list 'kv_kv-drawTripleCenter nil 0 a))
  (try (list 'kv_kv-getTripleCoord a))
  (foreach b (list (car runs) (nth 17 runs) (last runs))
    (try (list 'kv_kv-drawTripleTransition nil 0 a b))
    (try (list 'kv_kv-drawTripleElbow nil 0 T 0.0 a b))
    (try (list 'kv_kv-drawTripleElbow nil 0 nil huge a b))
    (try (list 'kv_kv-drawTripleWye nil 0 nil 0.0 a b a))
    (try (list 'kv_kv-drawTripleTakeoff nil 0 nil 0.0 a b b a))))
;; What was made is sound: closed bodies with a volume.
(setq bad 0 e (entnext))
(while e
  (setq s (host-solid e))
  (if (and s (> (get "bodies" s) 0) (not (and (get "closed" s) (> (get "volume" s) 0)))) (setq bad (1+ bad)))
  (setq e (entnext e)))
bad                                                          ;=> 0
;; An outline of many points
(defun ring (count / i points)
  (setq i 0)
  (while (< i count) (setq points (cons (list (cos (/ (* 2 pi i) count)) (sin (/ (* 2 pi i) count)) 0) points) i (1+ i)))
  points)
(get "closed" (host-solid (get "en" (kv_kv-drawTripleSkin 1.0 (ring 200)))))  ;=> T
;; Lists that say nonsense about a solid's bytes.
(setq e (kv_kv-drawTripleCenter nil 0 (run '(0 0 0) '(9 0 0) 4.0 4.0 "")))
(setq data (entget e))
(progn (host-output) (entmod (subst '(310 . "FFFFFFFF") (assoc 310 data) data)) (get "bodies" (host-solid e)))  ;=> 0
(progn (host-output nil) (try (list 'kv_kv-explodeSolid e)))  ;=> "nil"
