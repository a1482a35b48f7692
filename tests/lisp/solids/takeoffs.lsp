;;; Takeoffs: taps on a straight main.
(load "words.lsp")

(setq main-head (run '(-100.0 0.0 0.0) '(0.0 0.0 0.0) 20.0 10.0 "SQ")
      main-tail (run '(0.0 0.0 0.0) '(100.0 0.0 0.0) 20.0 10.0 "SQ"))
(defun tap (degrees width height / g)
  (setq g (* degrees (/ pi 180)))
  (run '(0.0 0.0 0.0) (list (* 60 (cos g)) (* 60 (sin g)) 0.0) width height "SQ"))
(defun takeoff (taps) (apply 'kv_kv-drawTripleTakeoff (append (list nil 0 nil 0.0 main-head main-tail) taps)))

;; At a right angle: half the tap's width and a collar before and behind, half the main and a collar along the tap.
(setq f (takeoff (list (tap 90 8.0 6.0))))
(mapcar 'car f)                                              ;=> ("en1" "en2" "dHeadLength" "dTailLength1" "dTailLength2" "dTailLength3")
(get "en2" f)                                                ;=> nil
(lengths f)                                                  ;=> ("7.000000" "7.000000" "13.000000" "0.000000")
(made (get "en1" f))                                         ;=> (2 12 T)
;; The tap's body is a hundredth narrower.
(near (volume (get "en1" f)) (+ (* 200 14.0) (* 7.99 6.0 13.0)))  ;=> T
;; As high as the main, it is a thousandth lower.
(near (volume (get "en1" (takeoff (list (tap 90 8.0 10.0))))) (+ (* 200 14.0) (* 7.99 9.999 13.0)))  ;=> T
;; At 45 degrees: half = 4 / sin, slant = 10 / tan, reach = 4 / tan + 10 / sin; before the tap it takes nothing, which counts as 0.
(lengths (takeoff (list (tap 45 8.0 6.0))))                  ;=> ("3.000000" "18.656854" "21.142136" "0.000000")
;; Through the top, it cuts through the height.
(setq f (takeoff (list (run '(0 0 0) '(0.0 0.0 40.0) 8.0 6.0 "SQ"))))
(lengths f)                                                  ;=> ("6.000000" "6.000000" "8.000000" "0.000000")
;; A tap away from the main's end: from where it stands.
(lengths (takeoff (list (run '(30.0 0.0 0.0) '(30.0 40.0 0.0) 8.0 6.0 "SQ"))))  ;=> ("23.000000" "37.000000" "13.000000" "0.000000")

;; Two taps; one that has no width is none, and only the second one is trimmed at the main's ends.
(setq f (takeoff (list (tap 90 8.0 6.0) (tap -60 6.0 6.0))))
(get "bodies" (host-solid (get "en1" f)))                    ;=> 3
(lengths f)                                                  ;=> ("7.000000" "12.237604" "13.000000" "16.279056")
(get "bodies" (host-solid (get "en1" (takeoff (list (tap 90 8.0 6.0) (tap -60 0.0 0.0))))))  ;=> 2
(get "bodies" (host-solid (get "en1" (takeoff (list (tap 90 8.0 6.0) nil)))))  ;=> 2

;; The main changes its section: a reducer behind the taps, which enters the drawing first.
(setq main-tail (run '(0.0 0.0 0.0) '(100.0 0.0 0.0) 12.0 10.0 "SQ"))
(setq f (takeoff (list (tap 90 8.0 6.0))))
(made (get "en2" f))                                         ;=> (1 6 T)
(lengths f)                                                  ;=> ("7.000000" "21.928203" "13.000000" "0.000000")
(equal (entnext (get "en2" f)) (get "en1" f))                ;=> T

;; Along the main there is nothing to take off.
(setq before (entities))
(takeoff (list (tap 0 8.0 6.0)))                             ;=> nil
(takeoff (list (tap 90 8.0 6.0) (tap 0 8.0 6.0)))            ;=> nil
(takeoff (list (tap 180 8.0 6.0)))                           ;=> nil
(takeoff (list (tap 90 0.0 6.0)))                            ;=> nil
(setq main-tail (with main-tail '("width" 0.0)))
(takeoff (list (tap 90 8.0 6.0)))                            ;=> nil
(- (entities) before)                                        ;=> 0
(vl-catch-all-error-p (vl-catch-all-apply 'takeoff '(nil)))  ;=> T
