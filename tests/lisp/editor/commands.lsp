; Commands as application code gives them. What they made is found by its groups.
(defun found (filter / set) (if (setq set (ssget "X" filter)) (sslength set) 0))
(setvar "CMDECHO" 0)
(progn (command "_.LINE" "0,0" '(10 0) "@0,5" "C") (found '((0 . "LINE"))))   ;=> 3
(found '((0 . "LINE") (10 10.0 5.0 0.0) (11 0.0 0.0 0.0)))   ;=> 1
(progn (command "line" '(0 0) '(1 1) "u" '(2 2) "") (found '((0 . "LINE") (11 1.0 1.0 0.0))))   ;=> 0
(command "_CIRCLE" '(20 0) 2.5 "CIRCLE" '(30 0) "D" "4" "circle" "2p" '(0 50) '(10 50))
(list (found '((0 . "CIRCLE") (40 . 2.5))) (found '((40 . 2.0))) (found '((0 . "CIRCLE") (10 5.0 50.0 0.0) (40 . 5.0))))   ;=> (1 1 1)
(progn (command "circle" "3p" '(1 0) '(0 1) '(-1 0)) (found '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0))))   ;=> 1
(progn (command "ARC" '(1 0) '(0 1) '(-1 0)) (found (list '(0 . "ARC") '(50 . 0.0) (cons 51 pi) '(40 . 1.0))))   ;=> 1
(progn (command "ARC" '(-1 0) '(0 1) '(1 0)) (found (list '(0 . "ARC") '(50 . 0.0) (cons 51 pi))))   ;=> 2
(progn (command "ARC" "C" '(0 0) '(2 0) "A" 90) (found (list '(0 . "ARC") '(40 . 2.0) (cons 51 (/ pi 2)))))   ;=> 1
(progn (command "PLINE" '(0 0) '(4 0) "A" '(4 2) "L" '(0 2) "C") (found '((0 . "LWPOLYLINE") (70 . 1) (90 . 4) (42 . 1.0))))   ;=> 1
(progn (command "PLINE" '(0 0) "W" 0.5 "" '(4 0) '(4 4) "U" "") (found '((0 . "LWPOLYLINE") (90 . 2) (40 . 0.5) (41 . 0.5))))   ;=> 1
(progn (command "TEXT" '(1 2) 2.5 90 "Two words") (found (list '(0 . "TEXT") '(1 . "Two words") '(40 . 2.5) (cons 50 (/ pi 2)))))   ;=> 1
(progn (command "TEXT" "J" "MC" '(7 7) 1 0 "Middle" "TEXT" "R" '(8 8) 1 0 "Right") (list (found '((72 . 1) (73 . 2) (11 7.0 7.0 0.0))) (found '((72 . 2) (73 . 0) (11 8.0 8.0 0.0)))))   ;=> (1 1)
(getvar "TEXTSIZE")                                      ;=> 1.0
(progn (command "MTEXT" '(0 0) "H" 3 "J" "MC" '(20 10) "First" "Second" "") (found '((0 . "MTEXT") (1 . "First`\\PSecond") (40 . 3.0) (41 . 20.0) (71 . 5))))   ;=> 1
; A command that was left open takes the next call's arguments.
(command "LINE" '(100 0))
(list (getvar "CMDACTIVE") (getvar "CMDNAMES"))          ;=> (1 "LINE")
(vl-catch-all-error-p (vl-catch-all-apply 'setvar '("CMDACTIVE" 0)))   ;=> T
(command '(110 0))
(command "@5<90" "")
(list (getvar "CMDACTIVE") (getvar "CMDNAMES") (found '((0 . "LINE") (11 110.0 5.0 0.0))))   ;=> (0 "" 1)
(progn (command "LINE" '(0 0)) (command) (getvar "CMDACTIVE"))   ;=> 0
(progn (command "LINE" '(0 0) nil) (getvar "CMDACTIVE"))         ;=> 0
(progn (command-s "LINE" '(0 0)) (getvar "CMDACTIVE"))           ;=> 0
(host-output)
(list (vl-cmdf "NONSENSE" 1 2) (vl-cmdf "REGEN"))                ;=> (nil T)
(host-output)                                            ;=> "\nUnknown command \"NONSENSE\"."
; PAUSE asks the user, who may cancel.
(host-input '(200 0))
(progn (command "LINE" PAUSE '(201 0) "") (found '((10 200.0 0.0 0.0))))   ;=> 1
(cadr (list (host-prompts) (progn (host-input 'cancel) (vl-catch-all-error-message (vl-catch-all-apply 'command (list "LINE" pause '(0 0)))))))   ;=> "Function cancelled"
(getvar "CMDACTIVE")                                     ;=> 0
; Prompts show as CMDECHO says; what doesn't suit is refused.
(setvar "CMDECHO" 1)
(host-output)
(progn (command "CIRCLE" '(0 0) -1 "x" 3) (host-output))
;=> "\nSpecify center point for circle or [3P/2P]: \nSpecify radius of circle or [Diameter]: \nValue must be positive and nonzero.\nSpecify radius of circle or [Diameter]: \nRequires numeric distance, second point, or option keyword.\nSpecify radius of circle or [Diameter]: "
(setvar "CMDECHO" 0)
; Changing what is there
(command "ERASE" "ALL" "")
(ssget "X")                                              ;=> nil
(progn (command "LINE" '(0 0) '(10 0) "") (setq line (ssname (ssget "L") 0)) (found nil))   ;=> 1
(progn (command "MOVE" line "" '(0 0) '(5 5)) (found '((10 5.0 5.0 0.0) (11 15.0 5.0 0.0))))   ;=> 1
(progn (command "MOVE" line "" "-5,-5" "") (found '((10 0.0 0.0 0.0))))   ;=> 1
(progn (command "COPY" "L" "" '(0 0) '(0 1) '(0 2) "") (list (found nil) (found '((10 0.0 2.0 0.0)))))   ;=> (3 1)
(progn (command "ROTATE" line "" '(0 0) 90) (found (list '(-4 . "<,=,=") '(11 1e-6 10.0 0.0))))   ;=> 1
(progn (command "ROTATE" line "" '(0 0) "R" 90 0) (found '((11 10.0 0.0 0.0) (10 0.0 0.0 0.0))))   ;=> 1
(progn (command "SCALE" line "" '(0 0) 2) (found '((11 20.0 0.0 0.0))))   ;=> 1
(progn (command "SCALE" line "" '(0 0) "C" "R" 20 5) (list (found '((11 20.0 0.0 0.0))) (found '((11 5.0 0.0 0.0)))))   ;=> (1 1)
(progn (command "MIRROR" line "" '(0 -10) '(1 -10) "N") (found '((10 0.0 -20.0 0.0) (11 20.0 -20.0 0.0))))   ;=> 1
(progn (command "PLINE" '(50 0) '(60 0) "A" '(60 10) "") (command "EXPLODE" "L" "") (list (found '((0 . "LWPOLYLINE"))) (found '((0 . "ARC")))))   ;=> (0 1)
; Undo goes back by commands, groups and marks.
(setq before (found nil))
(progn (command "POINT" '(0 0)) (command "POINT" '(1 1)) (command "POINT" '(2 2)) (- (found nil) before))   ;=> 3
(progn (command "U") (- (found nil) before))             ;=> 2
(progn (command "UNDO" 2) (- (found nil) before))        ;=> 0
(progn (command "UNDO" "BE") (command "POINT" '(0 0)) (command "POINT" '(1 1)) (command "UNDO" "E") (command "_.U") (- (found nil) before))   ;=> 0
(progn (command "UNDO" "Mark") (command "POINT" '(0 0)) (command "MOVE" "L" "" '(0 0) '(9 9)) (command "UNDO" "Back") (- (found nil) before))   ;=> 0
(progn (command "ERASE" "ALL" "") (command "U") (= (found nil) before))   ;=> T
; Blocks
(progn (command "LINE" '(0 0) '(1 0) "" "BLOCK" "Tick" '(0 0) "L" "") (command "INSERT" "tick" '(70 0) 2 3 90) (found (list '(0 . "INSERT") '(2 . "Tick") '(41 . 2.0) '(42 . 3.0) '(43 . 2.0) (cons 50 (/ pi 2)))))   ;=> 1
(progn (command "INSERT" "Tick" "S" 4 "R" 0 '(80 0)) (found '((2 . "TICK") (41 . 4.0) (10 80.0 0.0 0.0))))   ;=> 1
(progn (command "INSERT" "Tick" '(90 0) "" "" "") (found '((2 . "T*") (41 . 1.0) (42 . 1.0))))   ;=> 1
(progn (setvar "CMDECHO" 1) (host-output) (command "INSERT" "no such block" '(0 0) 1 1 0) (host-output))
;=> "\nEnter block name: \n\"no such block.dwg\": Can't find file in search path."
(setvar "CMDECHO" 0)
; Blocks that are drawings of their own, by path and under another name
(setq folder (getenv "ZARBO_SCRATCH"))
(progn (host-new "Part.dwg") (setvar "CMDECHO" 0) (command "CIRCLE" '(0 0) 3 "SAVEAS" "" (strcat folder "/Part.dwg")) (command "_.LINE" '(0 0) '(9 9) "" "QSAVE") (host-activate "Drawing1.dwg"))
(progn (command "INSERT" (strcat folder "/Part") '(300 0) 1 1 0) (list (found '((0 . "INSERT") (2 . "Part"))) (ssget "C" '(302.9 -0.1) '(303.1 0.1))) (sslength (ssget "C" '(302.9 -0.1) '(303.1 0.1))))   ;=> 1
(progn (command "INSERT" (strcat "Other=" folder "/Part.dwg") '(310 0) 1 1 0) (found '((0 . "INSERT") (2 . "OTHER"))))   ;=> 1
; Attributes are asked for, as ATTREQ says.
(progn (entmake '((0 . "BLOCK") (2 . "Tag") (70 . 2) (10 0.0 0.0 0.0))) (entmake '((0 . "ATTDEF") (10 0.0 0.0 0.0) (40 . 1.0) (1 . "none") (3 . "Number?") (2 . "NO") (70 . 0))) (entmake '((0 . "ENDBLK"))))
(defun attribute () (cdr (assoc 1 (entget (entnext (ssname (ssget "L") 0))))))
(progn (command "INSERT" "Tag" '(400 0) 1 1 0 "A 42") (attribute))   ;=> "A 42"
(progn (command "INSERT" "Tag" '(400 9) 1 1 0 "") (attribute))       ;=> "none"
(progn (command "COPY" "L" "" '(0 0) '(0 9) "") (attribute))         ;=> "none"
(progn (setvar "ATTREQ" 0) (command "INSERT" "Tag" '(400 20) 1 1 0) (getvar "CMDACTIVE"))   ;=> 0
; Layers
(command "-LAYER" "N" "A-WALL,A-DOOR" "C" "red" "A-*" "M" "M-DUCT" "C" 5 "" "LT" "Continuous" "" "")
(getvar "CLAYER")                                        ;=> "M-DUCT"
(progn (command "POINT" '(0 0)) (found '((8 . "M-DUCT"))))   ;=> 1
(progn (command "LAYER" "S" "0" "OFF" "M-DUCT" "F" "A-WALL" "LO" "A-DOOR" "") (getvar "CLAYER"))   ;=> "0"
(host-output)
(progn (setvar "CMDECHO" 1) (command "LAYER" "F" "0" "S" "No such" "F" "XYZ*" "") (setvar "CMDECHO" 0) (vl-string-search "CURRENT" (host-output)))   ;=> 157
; Views
(progn (command "ZOOM" "C" '(5 5) 20) (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))   ;=> ((5.0 5.0 0.0) 20.0)
(progn (command "ZOOM" "2x") (getvar "VIEWSIZE"))        ;=> 10.0
(progn (command "ZOOM" "W" '(0 0) '(10 30)) (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))   ;=> ((5.0 15.0 0.0) 30.0)
(progn (command "SETVAR" "LTSCALE" 2) (getvar "LTSCALE"))   ;=> 2.0
