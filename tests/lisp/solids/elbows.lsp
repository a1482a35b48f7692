;;; Elbows: square, radius and cable tray.
(load "words.lsp")

;; The head runs to the corner at the origin, the tail away from it.
(defun head (width height shape) (run '(-100.0 0.0 0.0) '(0.0 0.0 0.0) width height shape))
(defun tail (degrees width height shape / g)
  (setq g (* degrees (/ pi 180)))
  (run '(0.0 0.0 0.0) (list (* 80 (cos g)) (* 80 (sin g)) 0.0) width height shape))
(defun cosd (degrees) (cos (* degrees (/ pi 180))))
(defun sind (degrees) (sin (* degrees (/ pi 180))))

;; A square one: half the width and a collar of 3 on either side; lengths count from the corner.
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail 90 20.0 10.0 "SQ")))
(mapcar 'car f)                                              ;=> ("en1" "en2" "dHeadLength" "dTailLength")
(get "en2" f)                                                ;=> nil
(lengths f)                                                  ;=> ("13.000000" "13.000000")
(made (get "en1" f))                                         ;=> (1 10 T)
(near (volume (get "en1" f)) (* 200 26.0))                   ;=> T
(defun fits (degrees / f)
  (setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail degrees 20.0 10.0 "SQ")))
  (and (near (get "dHeadLength" f) (+ 3 (/ (* 10 (- 1 (cosd degrees))) (sind degrees))))
       (near (get "dTailLength" f) (get "dHeadLength" f))
       (near (volume (get "en1" f)) (* 400 (get "dHeadLength" f)))))
(mapcar 'fits '(30 60 120 150))                              ;=> (T T T T)
;; A tail of another width fits by itself; of another height, it gets a reducer.
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail 90 12.0 10.0 "SQ")))
(list (get "en2" f) (lengths f))                             ;=> (nil ("9.000000" "13.000000"))
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail 90 12.0 8.0 "SQ")))
(made (get "en2" f))                                         ;=> (1 6 T)
(lengths f)                                                  ;=> ("9.000000" "16.732051")
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 20.0 "RD") (tail 90 12.0 12.0 "RD")))
(list (made (get "en1" f)) (made (get "en2" f)))             ;=> ((1 50 T) (1 26 T))
(near (volume (get "en1" f)) (* (circle-area 20.0) 26))      ;=> T
;; Round meets rectangular of the same sizes: the elbow is round, and nothing asks for a reducer.
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 20.0 "RD") (tail 90 20.0 20.0 "SQ")))
(lengths f)                                                  ;=> ("13.000000" "13.000000")

;; A radius one: the ratio to the centre line, 1.5 without one.
(defun radius-elbow (radius) (kv_kv-drawTripleElbow nil 0 nil radius (head 20.0 10.0 "SQ") (tail 90 20.0 10.0 "SQ")))
(lengths (radius-elbow 0.0))                                 ;=> ("30.000000" "30.000000")
(lengths (radius-elbow 20.0))                                ;=> ("20.000000" "20.000000")
(lengths (radius-elbow 10.0))                                ;=> ("10.020000" "10.020000")
(lengths (radius-elbow 1.0))                                 ;=> ("10.020000" "10.020000")
(lengths (radius-elbow 10.2))                                ;=> ("10.200000" "10.200000")
(radius-elbow -20.0)                                         ;=> nil
(near (volume (get "en1" (radius-elbow 0.0))) (* 200 2 30 6 (sin (/ pi 24)) (cos (/ pi 24))))  ;=> T
(made (get "en1" (radius-elbow 0.0)))                        ;=> (1 26 T)
(setq f (kv_kv-drawTripleElbow nil 0 nil 0.0 (head 20.0 20.0 "RD") (tail 60 12.0 12.0 "RD")))
(list (get "bodies" (host-solid (get "en1" f))) (made (get "en2" f)))  ;=> (1 (1 26 T))
;; Layers are in the sizes already.
(lengths (kv_kv-drawTripleElbow nil 0 nil 30.0 (with (head 20.0 10.0 "SQ") '("layer1" 1.0)) (with (tail 90 20.0 10.0 "SQ") '("layer1" 1.0))))  ;=> ("30.000000" "30.000000")

;; Cable trays that lie level are square outside and round inside; others are bends like any.
(setq f (kv_kv-drawTripleElbow nil 0 "CABLETRAY" 30.0 (head 20.0 4.0 "SQ") (tail 90 20.0 4.0 "SQ")))
(lengths f)                                                  ;=> ("30.000000" "30.000000")
(near (volume (get "en1" f)) (* 4 (- 1600 (/ (circle-area 40.0) 4))))  ;=> T
(setq climbing (with (tail 90 20.0 4.0 "SQ") '()))
(setq climbing (replaced 5 40.0 climbing))
(setq f (kv_kv-drawTripleElbow nil 0 "CABLETRAY" 30.0 (head 20.0 4.0 "SQ") climbing))
(get "closed" (host-solid (get "en1" f)))                    ;=> T
;; Another text is followed by the flag.
(lengths (kv_kv-drawTripleElbow nil 0 "DUCT" T 0.0 (head 20.0 10.0 "SQ") (tail 90 20.0 10.0 "SQ")))  ;=> ("13.000000" "13.000000")

;; Upwards: a vertical tail takes its width from the head.
(setq riser (run '(0.0 0.0 0.0) '(0.0 0.0 60.0) 20.0 10.0 "SQ"))
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") riser))
(lengths f)                                                  ;=> ("8.000000" "8.000000")
(near (volume (get "en1" f)) (* 200 16.0))                   ;=> T
(lengths (kv_kv-drawTripleElbow nil 0 nil 20.0 (head 20.0 10.0 "SQ") riser))  ;=> ("20.000000" "20.000000")
;; Runs that are aligned at their bottoms miss each other by half the difference of their heights.
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (with (head 20.0 10.0 "SQ") '("vertical" "b")) (with (tail 90 20.0 8.0 "SQ") '("vertical" "b"))))
(list (made (get "en1" f)) (made (get "en2" f)))             ;=> ((1 12 T) (1 6 T))
;; Far away.
(setq f (kv_kv-drawTripleElbow nil 0 T 0.0 (run '(1e6 1e6 1e6) '(1000100.0 1e6 1e6) 20.0 10.0 "SQ") (run '(1000100.0 1e6 1e6) '(1000100.0 1000100.0 1e6) 20.0 10.0 "SQ")))
(equal (volume (get "en1" f)) 5200.0 5e-3)                   ;=> T

;; Refusals leave nothing behind.
(setq before (entities))
(kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail 0 20.0 10.0 "SQ"))  ;=> nil
(kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (tail 180 20.0 10.0 "SQ"))  ;=> nil
(kv_kv-drawTripleElbow nil 0 nil 0.0 (head 20.0 10.0 "SQ") (tail 0 20.0 10.0 "SQ"))  ;=> nil
(kv_kv-drawTripleElbow nil 0 nil 0.0 (head 0.0 10.0 "SQ") (tail 90 20.0 10.0 "SQ"))  ;=> nil
(kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (run '(0 0 0) '(0 0 0) 20.0 10.0 "SQ"))  ;=> nil
(kv_kv-drawTripleElbow nil 0 T 0.0 (head 20.0 10.0 "SQ") (run '(0 0 50) '(0 90 50) 20.0 10.0 "SQ"))  ;=> nil
(- (entities) before)                                        ;=> 0
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-drawTripleElbow (list nil 0 T "0" (head 20.0 10.0 "SQ") (tail 90 20.0 10.0 "SQ"))))  ;=> T
