; Views: variables follow the camera, picks and windows are in the view's plane, the way back.
(setvar "CMDECHO" 0)
(defun line (a b) (entmakex (list '(0 . "LINE") (cons 10 a) (cons 11 b))))
(defun same (a b) (equal a b 1e-9))
(defun zoom-to (centre height) (command "ZOOM" "C" centre height))
(defun view () (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))
(list (view) (getvar "VIEWDIR") (getvar "VIEWTWIST") (getvar "SCREENSIZE"))   ;=> (((0.0 0.0 0.0) 9.0) (0.0 0.0 1.0) 0.0 (1600.0 1200.0 0.0))
(progn (zoom-to '(5 5) 20) (zoom-to '(1 2) 4) (zoom-to '(3 3) 8) (view))   ;=> ((3.0 3.0 0.0) 8.0)
(progn (command "ZOOM" "P") (view))             ;=> ((1.0 2.0 0.0) 4.0)
(progn (command "ZOOM" "P" "ZOOM" "P") (view))  ;=> ((0.0 0.0 0.0) 9.0)
(progn (setvar "CMDECHO" 1) (host-output) (command "ZOOM" "P") (setvar "CMDECHO" 0) (if (vl-string-search "There is no previous view." (host-output)) T))   ;=> T
; From the side two lines that cross in plan lie apart, and one stands upright.
(setq low (line '(0 0 0) '(10 0 0)) high (line '(5 -5 6) '(5 5 6)) post (line '(20 0 0) '(20 0 10)))
(progn (command "VIEW" "Front") (list (same (getvar "VIEWDIR") '(0 -1 0)) (same (getvar "VIEWTWIST") 0.0)))   ;=> (T T)
(zoom-to '(10 0 5) 40)
(mapcar '(lambda (p) (eq (car (nentselp p)) post)) '((20 0 5) (20 70 9.9) (20 0 11)))   ;=> (T T nil)
(mapcar '(lambda (p e) (eq (car (nentselp p)) e)) '((5 3 0) (5 99 6)) (list low high))   ;=> (T T)
(sslength (ssget "W" '(-1 0 -1) '(11 0 1)))     ;=> 1
(sslength (ssget "C" '(11 0 7) '(4 0 -1)))      ;=> 2
(same (osnap '(20.01 33 9.9) "end") '(20 0 10)) ;=> T
(same (trans '(0 0 1) 0 2) '(0 1 0))            ;=> T
(progn (command "VPOINT" '(1 1 1)) (same (getvar "VIEWDIR") (list (sqrt (/ 1. 3)) (sqrt (/ 1. 3)) (sqrt (/ 1. 3)))))   ;=> T
(progn (command "PLAN") (list (getvar "VIEWDIR") (if (nentselp '(5 3)) T)))   ;=> ((0.0 0.0 1.0) T)
; The variables set the view, each as a step that ZOOM Previous takes back; what can't be a view is refused in words.
(defun set-to (name value) (if (vl-catch-all-error-p (vl-catch-all-apply 'setvar (list name value))) 'refused (getvar name)))
(list (set-to "VIEWCTR" '(7 8)) (set-to "VIEWSIZE" 12) (same (set-to "VIEWDIR" '(0 -5 0)) '(0 -1 0)))   ;=> ((7.0 8.0 0.0) 12.0 T)
(mapcar '(lambda (p) (eq (car (nentselp p)) post)) '((20 0 5) (20 70 9.9) (20 0 11)))   ;=> (T T nil)
(progn (command "ZOOM" "P" "ZOOM" "P") (list (view) (getvar "VIEWDIR")))   ;=> (((7.0 8.0 0.0) 40.0) (0.0 0.0 1.0))
(list (same (set-to "VIEWTWIST" (/ pi 2)) (/ pi 2)) (same (progn (setvar "VIEWDIR" '(1 1 1)) (getvar "VIEWTWIST")) (/ pi 2)))   ;=> (T T)
(setq before (list (view) (getvar "VIEWDIR")))
(mapcar 'set-to '("VIEWSIZE" "VIEWSIZE" "VIEWSIZE" "VIEWSIZE" "VIEWDIR" "VIEWDIR" "VIEWCTR" "VIEWCTR" "VIEWTWIST" "SCREENSIZE" "SCREENSIZE" "SCREENSIZE")
  '(0 -4.0 1e300 "large" (0 0 0) 5 "middle" (1e300 0) (1 2) (0 5) (640.5 480) (1e9 480)))
;=> (REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED)
(same before (list (view) (getvar "VIEWDIR")))  ;=> T
(setvar "VIEWSIZE" -4.0)                        ;=> ; error: AutoCAD variable setting rejected: "VIEWSIZE" -4.0
; Without a window SCREENSIZE decides how far a pick reaches.
(progn (setvar "VIEWDIR" '(0 0 1)) (setvar "VIEWTWIST" 0) (setvar "VIEWSIZE" 48.0) (mapcar '(lambda (size) (setvar "SCREENSIZE" size) (if (nentselp '(8 0.5)) T)) '((1600 1200) (160 120))))   ;=> (nil T)
(list (getvar "SCREENSIZE") (setvar "SCREENSIZE" '(1600 1200)))   ;=> ((160.0 120.0 0.0) (1600 1200))
; The index follows what is moved, erased, taken back, and what the layers show.
(defun there (p) (if (ssget "C" (mapcar '- p '(0.5 0.5)) (mapcar '+ p '(0.5 0.5))) T))
(list (there '(10 0)) (there '(30 30)))         ;=> (T nil)
(command "MOVE" low "" '(0 0) '(20 30))
(list (there '(10 0)) (there '(30 30)))         ;=> (nil T)
(command "U")
(list (there '(10 0)) (there '(30 30)))         ;=> (T nil)
(entdel low)
(there '(10 0))                                 ;=> nil
(entdel low)
(there '(10 0))                                 ;=> T
(command "LAYER" "M" "hidden" "")
(setq other (line '(50 50) '(60 50)))
(there '(55 50))                                ;=> T
(command "LAYER" "S" "0" "OFF" "hidden" "")
(there '(55 50))                                ;=> nil
(command "LAYER" "ON" "hidden" "")
(there '(55 50))                                ;=> T
; What a block holds is found where the block stands, also after it changed.
(progn (entmake '((0 . "BLOCK") (2 . "inner") (70 . 0) (10 0 0 0))) (entmake '((0 . "LINE") (10 0 0 0) (11 1 0 0))) (entmake '((0 . "ENDBLK"))))
(progn (entmake '((0 . "BLOCK") (2 . "outer") (70 . 0) (10 0 0 0))) (entmake '((0 . "INSERT") (2 . "inner") (10 0 0 0))) (entmake '((0 . "ENDBLK"))))
(entmake '((0 . "INSERT") (2 . "outer") (10 100 100 0)))
(list (there '(101 100)) (there '(107 100)))    ;=> (T nil)
(entmod (subst (quote (11 8.0 0.0 0.0)) (quote (11 1.0 0.0 0.0)) (entget (entnext (tblobjname "BLOCK" "inner")))))
(there '(107 100))                              ;=> T
; Far away nothing is lost.
(zoom-to '(1e9 1e9) 100)
(setq far (line '(1e9 1e9) '(1000000010 1e9)))
(eq (car (nentselp '(1000000005 1e9))) far)     ;=> T
; Each space has a view of its own.
(progn (zoom-to '(7 7) 70) (setvar "TILEMODE" 0) (view))   ;=> ((0.0 0.0 0.0) 9.0)
(progn (setvar "TILEMODE" 1) (view))            ;=> ((7.0 7.0 0.0) 70.0)
