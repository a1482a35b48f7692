;;; Transitions.
(load "words.lsp")

(setq head (run '(0.0 0.0 0.0) '(100.0 0.0 0.0) 20.0 10.0 "SQ")
      tail (run '(100.0 0.0 0.0) '(200.0 0.0 0.0) 12.0 8.0 "SQ"))
(setq slope (/ (sin (* 15 (/ 3.14159265 180))) (cos (* 15 (/ 3.14159265 180)))))
(setq f (kv_kv-drawTripleTransition nil 0 head tail))
(mapcar 'car f)                                              ;=> ("en1" "dHeadLength" "dTailLength")
(get "dHeadLength" f)                                        ;=> 0.0
(near (get "dTailLength" f) (/ 4.0 slope))                   ;=> T
(made (get "en1" f))                                         ;=> (1 6 T)
;; V = L/3 (A0 + A1 + M)
(near (volume (get "en1" f)) (* (/ (get "dTailLength" f) 3) (+ 200.0 96.0 (/ (+ (* 20 8.0) (* 12 10.0)) 2))))  ;=> T

;; Another shape takes half the larger size of the head at least; of the tail's sizes nothing counts.
(setq round (run '(100.0 0.0 0.0) '(200.0 0.0 0.0) 18.0 18.0 "RD"))
(near (get "dTailLength" (kv_kv-drawTripleTransition nil 0 (with head '("width" 18.0 "height" 18.0)) round)) 9.0)  ;=> T
(near (get "dTailLength" (kv_kv-drawTripleTransition nil 0 head round)) (/ 4.0 slope))  ;=> T
(near (get "dTailLength" (kv_kv-drawTripleTransition nil 0 (with head '("width" 40.0 "height" 18.0)) (with round '("width" 40.0)))) 20.0)  ;=> T
(setq f (kv_kv-drawTripleTransition nil 0 head round))
(near (volume (get "en1" f)) (* (/ (get "dTailLength" f) 3) (+ 200.0 (circle-area 18.0) (* 30 18.0 0.5))))  ;=> T

;; Equal sections need none.
(setq before (entities))
(kv_kv-drawTripleTransition nil 0 head (with tail '("width" 20.0 "height" 10.0)))  ;=> nil
(- (entities) before)                                        ;=> 0
;; A section that can't be built is not checked: the entity has no body, and its length counts.
(setq f (kv_kv-drawTripleTransition nil 0 head (with tail '("width" 0.0))))
(get "bodies" (host-solid (get "en1" f)))                    ;=> 0
(near (get "dTailLength" f) (/ 10.0 slope))                  ;=> T
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-drawTripleTransition (list nil 0 head nil)))  ;=> T
