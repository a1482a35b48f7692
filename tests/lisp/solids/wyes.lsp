;;; Wyes.
(load "words.lsp")

(defun limb (degrees width height shape / g)
  (setq g (* degrees (/ pi 180)))
  (run '(0.0 0.0 0.0) (list (* 90 (cos g)) (* 90 (sin g)) 0.0) width height shape))
(setq head (run '(-200.0 0.0 0.0) '(0.0 0.0 0.0) 20.0 10.0 "SQ"))
(defun wye (first second) (kv_kv-drawTripleWye nil 0 nil 0.0 head first second))

;; Straight on and a branch: the branch's width before and behind, the main's half beside.
(setq f (wye (limb 0 20.0 10.0 "SQ") (limb 90 12.0 10.0 "SQ")))
(mapcar 'car f)                                              ;=> ("en1" "en2" "en3" "dHeadLength" "dTailLength1" "dTailLength2")
(list (get "en2" f) (get "en3" f))                           ;=> (nil nil)
(lengths f)                                                  ;=> ("9.000000" "9.000000" "13.000000")
(near (volume (get "en1" f)) (+ (* 200 18.0) (* 120 3.0)))   ;=> T
(get "closed" (host-solid (get "en1" f)))                    ;=> T
;; Both at 45 degrees: walls meet at w/2 / tan(g/2).
(setq f (wye (limb 45 20.0 10.0 "SQ") (limb -45 20.0 10.0 "SQ")))
(lengths f)                                                  ;=> ("7.142136" "13.000000" "13.000000")
(get "bodies" (host-solid (get "en1" f)))                    ;=> 1
;; A tail of another height is given the head's at the wye, and a reducer; one of another section all of it.
(setq f (wye (limb 0 20.0 8.0 "SQ") (limb 90 12.0 8.0 "SQ")))
(list (made (get "en2" f)) (made (get "en3" f)))             ;=> ((1 6 T) (1 6 T))
(lengths f)                                                  ;=> ("13.000000" "16.732051" "27.928203")
(setq f (wye (limb 0 20.0 10.0 "SQ") (limb 90 10.0 10.0 "RD")))
(get "faces" (host-solid (get "en3" f)))                     ;=> 30
;; Only the width differs: no reducer, also where the main gets narrower.
(setq f (wye (limb 0 16.0 10.0 "SQ") (limb 90 12.0 10.0 "SQ")))
(list (get "en2" f) (get "en3" f) (get "closed" (host-solid (get "en1" f))))  ;=> (nil nil T)
;; Round.
(setq head (run '(-200.0 0.0 0.0) '(0.0 0.0 0.0) 20.0 20.0 "RD"))
(setq f (wye (limb 60 20.0 20.0 "RD") (limb -60 20.0 20.0 "RD")))
(list (get "closed" (host-solid (get "en1" f))) (get "bodies" (host-solid (get "en1" f))))  ;=> (T 1)

;; A tail that runs back along the head, tails that agree, and lines that don't meet.
(setq before (entities))
(wye (limb 180 20.0 20.0 "RD") (limb 90 20.0 20.0 "RD"))     ;=> nil
(wye (limb 60 20.0 20.0 "RD") (limb 60 20.0 20.0 "RD"))      ;=> nil
(wye (limb 0 20.0 20.0 "RD") (run '(0 0 50) '(0 90 50) 20.0 20.0 "RD"))  ;=> nil
(- (entities) before)                                        ;=> 0
;; A reducer that its sections refuse is there without a body, and its length counts.
(setq f (wye (limb 0 0.0 0.0 "RD") (limb 90 20.0 20.0 "RD")))
(list (get "bodies" (host-solid (get "en2" f))) (cadr (lengths f)))  ;=> (0 "50.320508")
(vl-catch-all-error-p (vl-catch-all-apply 'wye (list (limb 0 20.0 20.0 "RD") nil)))  ;=> T
