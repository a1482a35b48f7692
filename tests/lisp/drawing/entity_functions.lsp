; Single operations of the host's entities.
(setvar "CMDECHO" 0)
(command "LINE" '(0 0) '(10 0 0) "")
(setq line (entlast))
(command "PLINE" '(0 0) '(3 4) '(9 4) "")
(setq bent (entlast))
(command "CIRCLE" '(30 0) 2.0)
(setq ring (entlast))
(setq foreign (namedobjdict))
(defun rounded (x) (cond ((numberp x) (atof (rtos x 2 6))) ((and (listp x) (vl-list-length x)) (mapcar 'rounded x)) (T x)))

; Curves
(mapcar 'AcDbCurve::getLength (list line bent))
;=> (10.0 11.0)
(rounded (AcDbCurve::getLength ring))
;=> 12.5664
(list (AcDbCurve::getPointAtDist bent 5) (AcDbCurve::getPointAtDist bent 8.0))
;=> ((3.0 4.0 0.0) (6.0 4.0 0.0))
(AcDbCurve::getPointAtDist bent 50.0)
;=> nil
(AcDbCurve::getClosestPointTo line '(4 7 9))
;=> (4.0 0.0 0.0)
(AcDbCurve::getClosestPointTo line '(40 7))
;=> (10.0 0.0 0.0)
(AcDbCurve::getDistAtPoint bent '(6 4 0))
;=> 8.0
; What lies outside is a failure on every curve.
(mapcar '(lambda (curve) (list (AcDbCurve::getPointAtDist curve 50.0) (AcDbCurve::getPointAtDist curve -1.0) (AcDbCurve::getDistAtPoint curve '(90 90))))
        (list line bent ring))
;=> ((nil nil nil) (nil nil nil) (nil nil nil))
(setq through (entmakex '((0 . "SPLINE") (100 . "AcDbEntity") (100 . "AcDbSpline") (70 . 1024) (71 . 3) (74 . 3) (11 0 0 0) (11 3 4 0) (11 6 0 0))))
(list (< 10 (AcDbCurve::getLength through) 12) (rounded (AcDbCurve::getPointAtDist through (/ (AcDbCurve::getLength through) 2))))
;=> (T (3.0 4.0 0.0))
(rounded (cdr (assoc "max" (AcDbEntity::getGeomExtents through))))
;=> (6.0 4.0 0.0)
(mapcar 'car (cdr (member '(100 . "AcDbSpline") (entget through))))
;=> (210 70 71 72 73 74 11 11 11)
(entdel through)
(AcDbCurve::getLength)
;=> ; error: ADS request error
;| Too few arguments passed.
(AcDbCurve::getLength "line")
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(AcDbCurve::getLength foreign)
;=> ; error: ADS request error
;| Bad data passed .
(AcDbCurve::getPointAtDist line "far")
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(AcDbCurve::getPointAtDist foreign 1.0)
;=> nil

; Paragraphs: widths and heights come from the font, so they are compared with each other.
(setq words (AcDbMText::insert "Supply air duct" '(0 20) nil "Standard" 4))
(setq wrapped (AcDbMText::insert "First\\PSupply air duct to the plant" '(0 30) 3.0 "No such style" "text"))
(mapcar '(lambda (code) (cdr (assoc code (entget words)))) '(1 10 41 71))
;=> ("Supply air duct" (0.0 20.0 0.0) 0.0 4)
(cdr (assoc 71 (entget wrapped)))
;=> 1
(> (AcDbMText::actualHeight wrapped) (* 3 (AcDbMText::actualHeight words)) 0.0)
;=> T
(< 1.5 (AcDbMText::actualWidth words) 3.0)
;=> T
(< 0.0 (AcDbMtext::lastLineWidth wrapped) (AcDbMText::actualWidth wrapped))
;=> T
(equal (AcDbMtext::lastLineWidth words) (AcDbMText::actualWidth words) 1e-9)
;=> T
(cdr (assoc 1 (entget wrapped)))
;=> "First\\PSupply air duct to the plant"
(setq empty (AcDbMText::insert "" '(0 0)))
(= (AcDbMText::actualHeight empty) (cdr (assoc 40 (entget empty))))
;=> T
(list (AcDbMText::ascent empty) (> (AcDbMText::descent words) 0.0))
;=> (0.0 T)
(list (AcDbMText::setDirection words pi) (rounded (AcDbMText::direction words)))
;=> (T 0.0)
(list (AcDbMText::setDirection words (/ pi 4)) (rounded (AcDbMText::direction words)))
;=> (T 0.785398)
(list (AcDbMText::setMask words T 1.25) (mapcar '(lambda (code) (cdr (assoc code (entget words)))) '(90 45)))
;=> (T (3 1.25))
(list (AcDbMText::setNormal words '(0 0 1)) (AcDbMText::setNormal words '(0 0 0)))
;=> (T nil)
(AcDbMText::setMask words T)
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(AcDbMText::actualWidth line)
;=> ; error: ADS request error
;| Bad data passed .
(list (AcDbMText::setDirection line 1.0) (AcDbMtext::lastLineWidth line))
;=> (nil nil)
(AcDbMText::insert "no place")
;=> ; error: ADS request error
;| Wrong type of arguments passed.

; Groups: create and selectable count only for a group that is made.
(list (kv_kv-GetGroup "Run") (kv_kv-setGroupSelectable "Run" T))
;=> (nil nil)
(setq group (kv_kv-GetGroup "Run" T))
(equal group (kv_kv-GetGroup "run" T T))
;=> T
(cdr (assoc 71 (entget group)))
;=> 0
(list (kv_kv-setGroupSelectable "Run" T) (cdr (assoc 71 (entget group))))
;=> (T 1)
(kv_kv-GetGroup 5)
;=> ; error: ADS request error
;| Wrong type of arguments passed.

; Colours, order, extents
(progn (kv_kv-setColor line 255 128 0) (mapcar '(lambda (code) (cdr (assoc code (entget line)))) '(62 420)))
;=> (30 16744448)
(progn (AcDbEntity::setColor line 3) (list (cdr (assoc 62 (entget line))) (assoc 420 (entget line))))
;=> (3 nil)
(AcDbEntity::setColor foreign 3)
;=> nil
(kv_kv-setColor foreign 1 2 3)
;=> ; error: ADS request error
;| Bad data passed .
(AcDbEntity::getGeomExtents bent)
;=> (("min" 0.0 0.0 0.0) ("max" 9.0 4.0 0.0))
(AcDbEntity::getGeomExtents foreign)
;=> nil
(kv_kv-sendToBack ring)
;=> nil
(progn (command "DRAWORDER" line "" "Front") (list (kv_kv-sendToBack ring) (kv_kv-sendToBack foreign)))
;=> (T nil)

; Leaders, faces, fitted polylines
(setq arrow (AcDbLeader::create '(0 0) '(5 5) '(9 5) "end"))
(vl-remove-if-not '(lambda (pair) (= (car pair) 10)) (entget arrow))
;=> ((10 0.0 0.0 0.0) (10 5.0 5.0 0.0) (10 9.0 5.0 0.0))
(cdr (assoc 3 (entget arrow)))
;=> "Standard"
(setq face (entmakex '((0 . "3DFACE") (10 0 0 0) (11 1 0 0) (12 1 1 0) (13 0 1 0))))
(list (AcDbFace::makeEdgeInvisibleAt face 1) (AcDbFace::makeEdgeInvisibleAt face 3) (cdr (assoc 70 (entget face))))
;=> (T T 10)
(AcDbFace::makeEdgeInvisibleAt line 0)
;=> nil
(defun polyline (points)
  (entmake '((0 . "POLYLINE") (66 . 1) (10 0 0 0)))
  (foreach point points (entmake (list '(0 . "VERTEX") (cons 10 point))))
  (entmake '((0 . "SEQEND")))
  (entlast))
(setq fitted (polyline '((0 0 0) (5 5 0) (10 0 0))))
(rounded (AcDbCurve::getLength fitted))
;=> 14.1421
(list (AcDb2dPolyline::setCurveType fitted "f") (rounded (AcDbCurve::getLength fitted)))
;=> (T 15.708)
(list (AcDb2dPolyline::setCurveType fitted "x") (rounded (AcDbCurve::getLength fitted)))
;=> (T 15.708)
(list (AcDb2dPolyline::setCurveType fitted "s") (< 10.0 (AcDbCurve::getLength fitted) 14.0))
;=> (T T)
(list (AcDb2dPolyline::setCurveType fitted "d") (rounded (AcDbCurve::getLength fitted)))
;=> (T 14.1421)
(AcDb2dPolyline::setCurveType bent "f")
;=> nil

; Layers
(progn (command "LAYER" "N" "Ducts" "") (kv_kv-setPlotStyle "Ducts" "Style 1"))
;=> nil
(kv_kv-setPlotStyle "No such layer" "Style 1")
;=> nil
(setq window (entmakex '((0 . "VIEWPORT") (10 5 5 0) (40 . 10.0) (41 . 8.0) (67 . 1) (410 . "Layout1") (68 . 2) (69 . 2))))
(kv_kv-freezeInViewport window T '("Ducts" "No such layer"))
;=> nil
(length (vl-remove-if-not '(lambda (pair) (= (car pair) 331)) (entget window)))
;=> 1
(progn (kv_kv-freezeInViewport window nil '("ducts")) (kv_kv-freezeInViewport window T '()) (assoc 331 (entget window)))
;=> nil
(kv_kv-freezeInViewport window T '("Ducts" 5))
;=> ; error: ADS request error
;| Wrong type of arguments passed.
