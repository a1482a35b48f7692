; A spline that has fit points alone runs through them.
(defun near (a b) (equal a b 1e-6))
(defun fit (closed points) (entmakex (append (list '(0 . "SPLINE") (cons 70 (if closed 1 0)) '(71 . 3)) (mapcar '(lambda (p) (cons 11 p)) points))))
(setq straight (fit nil '((0.0 0.0 0.0) (1.0 0.0 0.0) (7.0 0.0 0.0) (10.0 0.0 0.0))))
(near 10.0 (AcDbCurve::getLength straight))     ;=> T
(near '(2.5 0.0 0.0) (AcDbCurve::getPointAtDist straight 2.5))   ;=> T
(setq points '((0.0 0.0 0.0) (3.0 4.0 1.0) (9.0 4.0 -2.0) (12.0 0.0 0.0) (12.0 0.0 0.0) (5.0 -6.0 0.0)))
(foreach closed '(nil T)
  (setq curve (fit closed points))
  (foreach each points (if (not (AcDbCurve::getDistAtPoint curve each)) (setq missed (cons each missed)))))
missed                                          ;=> nil
; Through 24 points of a circle it is nearly the circle, all around.
(setq i -1 round nil)
(repeat 24 (setq i (1+ i) round (cons (polar '(0.0 0.0 0.0) (* i (/ pi 12)) 10.0) round)))
(setq ring (fit T round))
(equal (* 20 pi) (AcDbCurve::getLength ring) 0.01)   ;=> T
(equal '(10.0 0.0 0.0) (AcDbCurve::getClosestPointTo ring '(99.0 0.0 0.0)) 0.01)   ;=> T
(setvar "CMDECHO" 0)
(command "_.ZOOM" "_E")
(equal (getvar "VIEWSIZE") 20.0 4.1)            ;=> T
; Its list is as it was given.
(length (vl-remove-if-not '(lambda (pair) (= (car pair) 11)) (entget ring)))   ;=> 24
(assoc 10 (entget ring))                        ;=> nil
; One point is no curve.
(AcDbCurve::getPointAtDist (fit nil '((1.0 1.0 0.0))) 0.0)   ;=> nil
; Beyond its ends no curve has points.
(mapcar '(lambda (e) (list (AcDbCurve::getPointAtDist e -1.0) (AcDbCurve::getPointAtDist e 100.0) (AcDbCurve::getDistAtPoint e '(50.0 50.0 0.0))))
  (list straight ring (entmakex '((0 . "LINE") (10 0.0 0.0 0.0) (11 5.0 0.0 0.0))) (entmakex '((0 . "ARC") (10 0.0 0.0 0.0) (40 . 3.0) (50 . 0.0) (51 . 1.0)))
        (entmakex '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 3.0)))))
;=> ((nil nil nil) (nil nil nil) (nil nil nil) (nil nil nil) (nil nil nil))
