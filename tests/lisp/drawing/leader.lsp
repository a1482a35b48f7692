; Leaders with a block at their end. Offsets are sheet units: the drawing's scale is 48.
(progn (setvar "CMDECHO" 0) (setvar "DIMSCALE" 48.0))
(defun real-of (code name) (cdr (assoc code (entget name))))
(setq missing nil)
(defun kvBlock-alertMissing (name) (setq missing (cons name missing)))
(progn (entmake '((0 . "BLOCK") (2 . "Tip") (70 . 0) (10 0 0 0)))
       (entmake '((0 . "LINE") (8 . "0") (10 0 0 0) (11 1 0 0)))
       (entmake '((0 . "ENDBLK"))))
(progn (command "LAYER" "N" "Notes" "") (setq points '((0 0 0) (96 0 0) (96 72 5))) T)
;=> T

(setq leader (kv_kv-leader-insert points "notes" "TIP" 0.125))
(mapcar '(lambda (code) (real-of code leader)) '(0 8 10 11 12 40))
;=> ("KVLEADER" "Notes" (0.0 0.0 0.0) (96.0 0.0 0.0) (96.0 72.0 5.0) 6.0)
; What can't be found gives nil: a layer without a word, a block with the application's message.
(list (kv_kv-leader-insert points "No such layer" "Nor such a block" 1) missing)
;=> (nil nil)
(list (kv_kv-leader-insert points "Notes" "No such block" 1.0) missing)
;=> (nil ("No such block"))
(list (kv_kv-leader-setBlock leader "Nothing") (length missing) (cdr (assoc "max" (AcDbEntity::getGeomExtents leader))))
;=> (T 2 (96.0 78.0 5.0))

(list (kv_kv-leader-setOffset leader 1) (real-of 40 leader))
;=> (T 48.0)
(list (kv_kv-leader-setPoints leader '((0 0) (96 0) (192 0))) (real-of 12 leader) (cadr (assoc "max" (AcDbEntity::getGeomExtents leader))))
;=> (T (192.0 0.0 0.0) 240.0)
; As a curve it is its chord.
(progn (kv_kv-leader-setPoints leader '((0 0) (3 40) (30 40))) (list (AcDbCurve::getLength leader) (AcDbCurve::getPointAtDist leader 25.0)))
;=> (50.0 (15.0 20.0 0.0))

; Exploding for the application leaves the leader; the host's command takes it.
(setq parts (kv_kv-leader-explode leader))
(mapcar '(lambda (part) (list (car part) (real-of 0 (cdr part)) (real-of 8 (cdr part)))) parts)
;=> (("obj" "LINE" "Notes") ("obj" "LINE" "Notes") ("obj" "INSERT" "Notes"))
(mapcar '(lambda (code) (real-of code (cdr (nth 2 parts)))) '(2 10 41 42 50))
;=> ("Tip" (30.0 40.0 0.0) 48.0 48.0 0.0)
(real-of 11 (cdr (nth 1 parts)))
;=> (-18.0 40.0 0.0)
(if (entget leader) (progn (command "EXPLODE" leader "") (list (entget leader) (real-of 0 (entlast)))))
;=> (nil "LINE")

; Wrong arguments and other entities
(kv_kv-leader-setPoints (cdar parts) points)
;=> nil
(list (kv_kv-leader-setBlock (cdar parts) "Tip") (kv_kv-leader-setOffset (cdar parts) 1.0) (kv_kv-leader-explode (cdar parts)))
;=> (nil nil nil)
(kv_kv-leader-insert '((0 0 0) (96 0 0)) "Notes" "Tip" 1.0)
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-leader-insert points "Notes" "Tip" "1.0")
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-leader-setPoints (cdar parts) '((0 0) (1 1)))
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-leader-explode "leader")
;=> ; error: ADS request error
;| Wrong type of arguments passed.

; A leader without a block, as a drawing exchange file gives it back, shows its legs and can't tell its extents.
(setq bare (entmakex '((0 . "KVLEADER") (8 . "Notes") (100 . "AcDbEntity") (100 . "KVLeader") (10 0 0 0) (11 4 0 0) (12 4 3 0) (40 . 0.5))))
(list (real-of 12 bare) (AcDbEntity::getGeomExtents bare))
;=> ((4.0 3.0 0.0) nil)
(setq loose (kv_kv-leader-explode bare) twin (progn (command "COPY" bare "" '(0 0) '(0 0) "") (entlast)))
(progn (command "EXPLODE" twin "") (list (entget twin) (real-of 0 (entlast)) (real-of 11 (entlast))))
;=> (nil "LINE" (4.0 2.5 0.0))
(mapcar '(lambda (part) (real-of 0 (cdr part))) loose)
;=> ("LINE" "LINE" "INSERT")
(list (kv_kv-leader-setBlock bare "tip") (cdr (assoc "max" (AcDbEntity::getGeomExtents bare))))
;=> (T (4.0 3.5 0.0))
(progn (command "MOVE" bare "" '(0 0) '(10 0) "SCALE" bare "" '(0 0) 2.0) (list (real-of 10 bare) (real-of 40 bare)))
;=> ((20.0 0.0 0.0) 0.5)

; While the module is away its leaders are kept, and they are leaders again when it comes back, block and all.
(setq before (AcDbEntity::getGeomExtents bare))
(list (arxunload "zarbo") (real-of 0 bare) (real-of 12 bare) (real-of 8 bare))
;=> ("zarbo" "KVLEADER" (28.0 6.0 0.0) "Notes")
(progn (entmake '((0 . "POINT") (10 0 0 0))) (arxload "zarbo"))
;=> "zarbo"
(equal before (AcDbEntity::getGeomExtents bare))
;=> T
(list (kv_kv-leader-setOffset bare 1) (real-of 40 bare))
;=> (T 48.0)
