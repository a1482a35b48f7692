; Choosing entities: by rule, by place, by hand. Handles are told as numbers of a known order.
(setvar "CMDECHO" 0)
(setq known nil)
(defun draw (what) (apply 'command what) (setq known (append known (list (ssname (ssget "L") 0)))))
(defun numbers (set / i found) (setq i -1) (if set (repeat (sslength set) (setq found (cons (1+ (vl-position (ssname set (setq i (1+ i))) known)) found)))) (reverse found))
(foreach each '(("LINE" (0 0) (10 0) "") ("LINE" (0 0) (0 10) "") ("CIRCLE" (20 5) 5) ("ARC" "C" (40 0) (50 0) (40 10)) ("PLINE" (60 0) (70 0) "A" (70 10) "") ("TEXT" (80 0) 2 0 "WWWW") ("POINT" (95 5)))
  (draw each))
(progn (command "LAYER" "M" "Other" "") (draw '("LINE" (0 20) (10 20) "")) (command "LAYER" "S" "0" "") (length known))   ;=> 8
; The whole drawing, with filters
(numbers (ssget "X"))                                    ;=> (1 2 3 4 5 6 7 8)
(numbers (ssget "_A"))                                   ;=> (1 2 3 4 5 6 7 8)
(numbers (ssget "X" '((0 . "LINE,CIRCLE") (8 . "0"))))   ;=> (1 2 3)
(numbers (ssget "X" '((-4 . "<OR") (0 . "TEXT") (-4 . "<AND") (0 . "LINE") (8 . "OTHER") (-4 . "AND>") (-4 . "OR>"))))   ;=> (6 8)
(ssget "X" '((0 . "SPHERE")))                            ;=> nil
(ssget "X" '((-4 . "<OR") (0 . "TEXT")))                 ;=> ; error: bad SSGET list
(ssget "Q")                                              ;=> ; error: bad argument value: ssget mode "Q"
(ssget "W" '(0 0))                                       ;=> ; error: bad point argument
(ssget "CP" '((0 0) (1 1)))                              ;=> ; error: bad point argument
(ssget "X" '((0 . "LINE")) 5)                            ;=> ; error: too many arguments
; Windows hold whole entities, crossing windows what they touch; borders count as inside.
(numbers (ssget "W" '(0 0) '(10 10)))                    ;=> (1 2)
(numbers (ssget "W" '(10 10) '(0 0)))                    ;=> (1 2)
(numbers (ssget "C" '(5 -1) '(6 1)))                     ;=> (1)
(numbers (ssget "C" '(2 2) '(8 8)))                      ;=> nil
(numbers (ssget "C" '(18 3) '(22 7)))                    ;=> nil
(numbers (ssget "C" '(24.5 4) '(26 6)))                  ;=> (3)
(numbers (ssget "C" '(25 5) '(26 6)))                    ;=> (3)
(numbers (ssget "W" '(15 0) '(25 10)))                   ;=> (3)
(numbers (ssget "W" '(15.001 0) '(25 10)))               ;=> nil
; An arc counts where it runs, not where its circle would.
(numbers (ssget "C" '(30 -1) '(39 1)))                   ;=> nil
(numbers (ssget "C" '(46 6) '(48 8)))                    ;=> (4)
(numbers (ssget "C" '(41 1) '(44 4)))                    ;=> nil
(numbers (ssget "W" '(40 0) '(50 10)))                   ;=> (4)
; The half circle of the polyline bulges to 75.
(numbers (ssget "C" '(74 4) '(76 6)))                    ;=> (5)
(numbers (ssget "W" '(60 0) '(75 10)))                   ;=> (5)
(numbers (ssget "W" '(60 0) '(74.9 10)))                 ;=> nil
; A text counts by its box, a point by itself.
(numbers (ssget "C" '(82 0.5) '(82.1 0.6)))              ;=> (6)
(numbers (ssget "C" '(82 2.5) '(82.1 3)))                ;=> nil
(numbers (ssget "C" '(94 4) '(96 6)))                    ;=> (7)
; Polygons and fences
(numbers (ssget "CP" '((-1 -1) (5 -1) (-1 5))))          ;=> (1 2)
(numbers (ssget "WP" '((-1 -1) (12 -1) (-1 1))))         ;=> nil
(numbers (ssget "WP" '((-1 -1) (30 -1) (-1 15))))        ;=> (1 2)
(numbers (ssget "_WP" '((14 -1) (30 -1) (20 5) (30 11) (14 11))))   ;=> nil
(numbers (ssget "F" '((5 -5) (5 30))))                   ;=> (1 8)
(numbers (ssget "F" '((5 -5) (5 30)) '((8 . "Other"))))  ;=> (8)
(numbers (ssget "F" '((15 5) (17 5) (17 30))))           ;=> (3)
(numbers (ssget '(5 0)))                                 ;=> (1)
(list (ssget '(5 5)) (getvar "ERRNO"))                   ;=> (nil 7)
(numbers (ssget '(0 0)))                                 ;=> (2)
(numbers (ssget ":E" '(0 0)))                            ;=> (1 2)
(numbers (ssget "L"))                                    ;=> (8)
; By hand: picks, windows by their direction, options, entities by name
(host-prompts)
(host-output)
(host-input '(5 0) '(20 10) 'enter)
(numbers (ssget))                                        ;=> (1 3)
(host-prompts)                                           ;=> ("\nSelect objects: " "\nSelect objects: " "\nSelect objects: ")
(host-output)                                            ;=> "\nSelect objects: \n1 found\nSelect objects: \n1 found, 2 total\nSelect objects: "
(numbers (ssget "P"))                                    ;=> (1 3)
(host-input '(-5 -5) '(11 11))
(numbers (ssget))                                        ;=> (1 2)
(host-input '(11 5) '(-5 -5))
(numbers (ssget))                                        ;=> (1 2)
(host-input '(11 5) '(5 -5))
(numbers (ssget))                                        ;=> (1)
(host-input "w" "-1,-1" "@11.5,11.5" "c" '(24 4) '(26 6) "r" '(5 0) "a" "l" "")
(numbers (ssget))                                        ;=> (2 3 8)
(host-input "all" "u" "wp" '(-1 -1) '(30 -1) '(-1 15) "" "f" '(75 -5) '(75 20) 'enter "p")
(numbers (ssget))                                        ;=> (1 2 5 3 8)
(host-input (list (nth 5 known) (nth 6 known)) (nth 6 known) 'enter)
(host-output)
(numbers (ssget '((0 . "TEXT"))))                        ;=> (6)
(host-output)                                            ;=> "\nSelect objects: \n1 found\n1 were filtered out.\nSelect objects: \n0 found, 1 total\n1 were filtered out.\nSelect objects: "
(host-input 'enter)
(list (ssget) (getvar "ERRNO"))                          ;=> (nil 52)
(host-input '(5 0) 'cancel)
(ssget)                                                  ;=> ; error: Function cancelled
(host-output)
(host-input "nonsense" '(5 0) 'enter)
(numbers (ssget))                                        ;=> (1)
(vl-string-search "*Invalid selection*" (host-output))   ;=> 18
; Prompts, keywords, one choice, points alone, locked layers
(host-prompts)
(host-input '(5 0) "R" '(5 0) '(0 5))
(ssget "_:$" '("\nAdd: " "\nTake away: "))               ;=> nil
(host-prompts)                                           ;=> ("\nAdd: " "\nAdd: " "\nTake away: " "\nTake away: ")
(host-input "s")
(ssget ":K" "Settings")                                  ;=> "Settings"
(host-input '(5 0))
(numbers (ssget "_:S"))                                  ;=> (1)
(host-input '(5 5))
(list (ssget ":S") (getvar "ERRNO"))                     ;=> (nil 7)
(host-input '(5 5) '(0 5) 'enter)
(numbers (ssget "+.:E"))                                 ;=> (2)
(command "LAYER" "LO" "Other" "")
(numbers (ssget "_X:L" '((0 . "LINE"))))                 ;=> (1 2)
(progn (command "ERASE" "ALL" "") (numbers (ssget "X"))) ;=> (8)
(command "U")
(command "LAYER" "U" "*" "OFF" "Other" "")
(list (numbers (ssget "C" '(5 19) '(6 21))) (numbers (ssget "A" '((8 . "Other")))))   ;=> (nil (8))
(command "LAYER" "F" "Other" "")
(list (ssget "A" '((8 . "Other"))) (numbers (ssget "X" '((8 . "Other")))))   ;=> (nil (8))
; Sets that commands find chosen
(progn (sssetfirst nil (ssget "X" '((0 . "CIRCLE")))) (numbers (ssget "I")))   ;=> (3)
(numbers (cadr (ssgetfirst)))                            ;=> (3)
(progn (command "MOVE" '(0 0) '(0 100)) (numbers (ssget "C" '(14 104) '(16 106))))   ;=> (3)
(ssget "I")                                              ;=> nil
; Picks of one entity
(host-input '(0 5) "5,0" (nth 3 known) (list (nth 2 known) '(1 2 3)) 'enter)
(defun pick (p / e) (if (setq e (entsel p)) (list (1+ (vl-position (car e) known)) (cadr e))))
(pick "\nPick: ")                                        ;=> (2 (0.0 5.0 0.0))
(pick nil)                                               ;=> (1 (5.0 0.0 0.0))
(pick "")                                                ;=> (4 (50.0 0.0 0.0))
(pick "")                                                ;=> (3 (1.0 2.0 3.0))
(list (pick "") (getvar "ERRNO"))                        ;=> (nil 52)
(host-input '(500 500))
(list (pick "") (getvar "ERRNO"))                        ;=> (nil 7)
(progn (initget "All") (host-input "a") (entsel))        ;=> "All"
(entsel)                                                 ;=> ; error: Function cancelled
; Inside of blocks: by their contents, however they are turned and stretched
(command "ERASE" "ALL" "")
(setq known nil)
(progn (command "CIRCLE" '(0 0) 1 "LINE" '(0 0) '(3 0) "") (setq circle (ssname (ssget '(1 0)) 0)) (command "BLOCK" "Valve" '(0 0) "ALL" "") (ssget "A"))   ;=> nil
(foreach each '(("INSERT" "Valve" (0 0) 1 1 90) ("INSERT" "Valve" (20 0) 2 1 0)) (draw each))
(numbers (ssget "C" '(-0.1 2.5) '(0.1 2.6)))             ;=> (1)
(numbers (ssget "C" '(2 -0.1) '(3 0.1)))                 ;=> nil
(numbers (ssget "W" '(18 -1) '(26 1)))                   ;=> (2)
(numbers (ssget "C" '(21.3 0.6) '(21.5 0.8)))            ;=> (2)
(numbers (ssget "C" '(20.65 0.65) '(20.75 0.75)))        ;=> nil
(setq nested (nentselp "" '(0 2.5 0)))
(list (cdr (assoc 0 (entget (car nested)))) (= (car (nth 3 nested)) (car known)))   ;=> ("LINE" T)
(mapcar '(lambda (row) (mapcar '(lambda (x) (rtos x 2 1)) row)) (nth 2 nested))
;=> (("0.0" "-1.0" "0.0" "0.0") ("1.0" "0.0" "0.0" "0.0") ("0.0" "0.0" "1.0" "0.0") ("0.0" "0.0" "0.0" "1.0"))
(host-input '(22 0))
(nth 2 (nentsel))                                        ;=> ((2.0 0.0 0.0) (0.0 1.0 0.0) (0.0 0.0 2.0) (20.0 0.0 0.0))
