;;; Hangers.
(load "words.lsp")

(defun hanger (band rectangular level / f)
  (setq f (kv_kv-drawHanger band '(0.0 0.0 0.0) 0.0 20.0 10.0 rectangular 0.5 1.0 level 0))
  (get "hanger" f))
;; A band: the block less the opening, which leaves nine tenths of the wall, and a rod from half the height.
(setq e (hanger T T 40.0))
(made e)                                                     ;=> (2 42 T)
(setq band (* 0.5 (- (* 22 12.0) (* 20.2 10.2))))
;; The opening cuts a tenth of the wall off the rod's foot.
(near (volume e) (+ band (* (circle-area 0.5) (- 35 0.1))))  ;=> T
(cadr (box e))                                               ;=> ("0.2500" "11.0000" "40.0000")
(car (box (hanger T T -40.0)))                               ;=> ("-0.2500" "-11.0000" "-40.0000")
;; At the foot's level there is no rod.
(near (volume (hanger T T 5.0)) band)                        ;=> T
(near (volume (hanger T T -5.0)) band)                       ;=> T
;; A round band around a duct of one size.
(setq e (get "hanger" (kv_kv-drawHanger T '(1e6 1e6 0.0) 0.7 12.0 12.0 nil 0.5 1.0 6.0 0)))
(equal (volume e) (* 0.5 (- (circle-area 14.0) (circle-area 12.2))) 1e-4)  ;=> T
(get "closed" (host-solid e))                                ;=> T

;; A bar under the duct and two rods; the duct's shape doesn't matter.
(setq e (hanger nil T 40.0))
(made e)                                                     ;=> (3 58 T)
(setq bar (* 22.0 1.0 1.0))
(near (volume e) (+ bar (* 2 (circle-area 0.5) 45.0)))       ;=> T
(box e)                                                      ;=> (("-0.5000" "-11.0000" "-6.0000") ("0.5000" "11.0000" "40.0000"))
(near (volume (hanger nil nil 40.0)) (volume e))             ;=> T
;; Below the duct the second rod's foot is above the bar all the same.
(near (volume (hanger nil T -40.0)) (+ bar (* (circle-area 0.5) (+ 34.0 35.0))))  ;=> T
;; At the first foot's level there are no rods.
(near (volume (hanger nil T -6.0)) bar)                      ;=> T

(setq before (entities))
(kv_kv-drawHanger T '(0 0 0) 0.0 20.0 10.0 T 0.0 1.0 40.0 0) ;=> nil
(kv_kv-drawHanger nil '(0 0 0) 0.0 20.0 10.0 T 0.5 0.0 40.0 0)  ;=> nil
(kv_kv-drawHanger T '(0 0 0) 0.0 -20.0 10.0 T 0.5 1.0 40.0 0)  ;=> nil
(- (entities) before)                                        ;=> 0
(mapcar 'refused '((kv_kv-drawHanger) (kv_kv-drawHanger T "p" 0.0 20.0 10.0 T 0.5 1.0 40.0 0)
                   (kv_kv-drawHanger T (0 0 0) 0.0 20.0 10.0 T 0.5 1.0 40.0)))
;=> (T T T)
