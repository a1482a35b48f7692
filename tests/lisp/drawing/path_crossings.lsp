; Paths are numbers: start, tangent angle, turn, radius, sweep; distances count along the first path.
(defun hits (pairs) (mapcar '(lambda (pair) (list (car pair) (atof (rtos (cdr pair) 2 6)))) pairs))
(setq quarter (/ pi 2))

; Two left turns about (0 10) and (10 10) with radius 10 cross below their centres' line, at (5, 10 - sqrt 75).
(hits (kv_kv-intersectArcArc 0.0 '(0 0) 0.0 1 10.0 quarter '(10 0) 0.0 1 10.0 3.0))
;=> nil
(hits (kv_kv-intersectArcArc 0.0 '(0 0) 0.0 1 10.0 quarter '(20 10) (* 3 quarter) -1 10.0 pi))
;=> (("d" 5.23599))
; Without the extension the line misses the arc; with it the lead-in is met before the start.
(kv_kv-intersectArcLine nil '(0 0) 0.0 1 10.0 quarter '(-5 -5) '(-5 5))
;=> nil
(hits (kv_kv-intersectArcLine 8.0 '(0 0) 0.0 1 10.0 quarter '(-5 -5) '(-5 5)))
;=> (("d" -5.0))
(hits (kv_kv-intersectArcLine 8 '(0 0) 0.0 1 10.0 quarter '(5 15) '(15 15)))
;=> (("d" 20.708))
; A right turn counts from the far end of its arc, and both its leads leave from the start of the travel.
(hits (kv_kv-intersectArcLine 0.0 '(0 0) 0.0 -1 10.0 quarter '(5 -5) '(15 -5)))
;=> (("d" 10.472))
(hits (kv_kv-intersectArcLine 8.0 '(0 0) 0.0 -1 10.0 quarter '(-5 -3) '(-5 3)))
;=> (("d" 20.708) ("d" -5.0))
; The line's own distances count from the point that was given, also before it.
(hits (kv_kv-intersectLineArc 0.0 '(0 0) '(20 0) '(12 0) quarter 1 3.0 3.5))
;=> (("d" 6.0) ("d" 12.0))
(hits (kv_kv-intersectLineArc 6.0 '(0 0) '(20 0) '(-2 -1) quarter 1 1000.0 0.01))
;=> (("d" -2.0005))
; A path without length meets nothing, where its circle would; its leads do.
(mapcar '(lambda (sweep) (hits (kv_kv-intersectArcLine 0.0 '(0 0) 0.0 1 10.0 sweep '(-50 10) '(50 10)))) '(0.0 -0.0 1e-20))
;=> (nil nil nil)
(list (kv_kv-intersectLineArc 0.0 '(-50 10) '(50 10) '(0 0) 0.0 -1 10.0 0.0)
      (kv_kv-intersectArcArc 0.0 '(0 0) 0.0 1 10.0 quarter '(20 0) pi 1 10.0 0.0)
      (kv_kv-intersectArcArc 0.0 '(0 0) 0.0 1 10.0 0.0 '(20 10) (* 3 quarter) -1 10.0 pi))
;=> (nil nil nil)
(hits (kv_kv-intersectArcLine 8.0 '(0 0) 0.0 1 10.0 0.0 '(-5 -5) '(-5 5)))
;=> (("d" -5.0))
(length (hits (kv_kv-intersectArcLine 0.0 '(0 0) 0.0 1 10.0 (* 2 pi) '(-50 10) '(50 10))))
;=> 2
; Heights don't count.
(hits (kv_kv-intersectLineArc 0.0 '(0 0 5) '(20 0 7) '(12 0 -3) quarter 1 3.0 3.5))
;=> (("d" 6.0) ("d" 12.0))
; What is no path gives nil.
(list (kv_kv-intersectArcArc 0.0 '(0 0) 0.0 1 10.0 quarter '(10 0) 0.0 1 10.0)
      (kv_kv-intersectArcArc 0.0 '(0 0) 0 1 10.0 quarter '(10 0) 0.0 1 10.0 3.0)
      (kv_kv-intersectArcLine 0.0) (kv_kv-intersectLineArc 1.0 '(0 0) 5)
      (kv_kv-intersectArcLine 0.0 '(0 0) 0.0 1 0.0 quarter '(-5 -5) '(5 5)))
;=> (nil nil nil nil nil)
