; Lists of entity names in place of selection sets
(setvar "CMDECHO" 0)
(setq known nil)
(defun draw (what) (apply 'command what) (setq known (append known (list (ssname (ssget "L") 0)))))
(defun numbers (names) (mapcar '(lambda (x) (1+ (vl-position x known))) names))
(foreach each '(("LINE" (0 0) (10 0) "") ("CIRCLE" (20 0) 5) ("PLINE" (40 0) (50 0) "") ("CIRCLE" (60 0) 5)) (draw each))
(progn (command "POINT" '(0 -50) "BLOCK" "Valve-A" '(0 -50) "L" "") (draw '("INSERT" "Valve-A" (80 0) 1 1 0)) (draw '("INSERT" "VALVE-A" (90 0) 1 1 0)) (length known))   ;=> 6
; Walks over model space
(numbers (ssgetX-all))                                   ;=> (1 2 3 4 5 6)
(numbers (ssgetX-circle))                                ;=> (2 4)
(numbers (ssgetX-polyline))                              ;=> (3)
(numbers (ssgetX-block))                                 ;=> (5 6)
(numbers (ssgetX-block "VALVE-A"))                       ;=> (5 6)
(ssgetX-block "Valve*")                                  ;=> nil
(ssgetX-block "Valve-")                                  ;=> nil
(ssgetX-block "")                                        ;=> nil
(numbers (ssgetX-block 5))                               ;=> (5 6)
; Locked, frozen and off layers play no part, erased entities are gone.
(progn (command "LAYER" "M" "Hidden" "") (draw '("CIRCLE" (0 50) 1)) (command "LAYER" "S" "0" "F" "Hidden" "OFF" "Hidden" "LO" "Hidden" "") (numbers (ssgetX-circle)))   ;=> (2 4 7)
(progn (command "ERASE" (nth 1 known) "") (numbers (ssgetX-circle)))   ;=> (4 7)
(progn (command "U") (numbers (ssgetX-circle)))          ;=> (2 4 7)
; By hand, with prompts and keywords of the program
(host-prompts)
(host-input '(5 0) '(25 0) 'enter)
(numbers (ssgetPK "\nAdd: " "\nRemove: "))               ;=> (1 2)
(host-prompts)                                           ;=> ("\nAdd: " "\nAdd: " "\nAdd: ")
(host-input '(5 0) '(25 0) "r" '(5 0) 'enter)
(numbers (ssgetPK "\nAdd: " "\nRemove: " "Settings"))    ;=> (2)
(host-prompts)                                           ;=> ("\nAdd: " "\nAdd: " "\nAdd: " "\nRemove: " "\nRemove: ")
; Without texts the mode is empty and the host's own prompt appears.
(host-input (nth 0 known) 'enter)
(numbers (ssgetPK nil nil nil))                          ;=> (1)
(host-prompts)                                           ;=> ("\nSelect objects: " "\nSelect objects: ")
(host-input (list (nth 0 known) (nth 1 known)) 'enter)
(numbers (ssgetPK nil nil nil '((0 . "CIRCLE"))))        ;=> (2)
(host-input (nth 0 known) 'enter)
(numbers (ssgetPK "" "" "" nil))                         ;=> (1)
(host-prompts)                                           ;=> ("\nSelect objects: " "\nSelect objects: " "\nSelect objects: " "\nSelect objects: ")
(host-input "s")
(ssgetPK nil nil "Settings")                             ;=> nil
(host-input 'enter)
(ssgetPK)                                                ;=> nil
(host-input '(5 0) 'cancel)
(ssgetPK)                                                ;=> nil
(host-input '(5 0) 'enter)
(ssgetPK nil nil nil '((0 . "CIRCLE")))                  ;=> nil
; Crossing polygons and windows
(numbers (ssgetCP '(-1 -1) '(26 -1) '(26 1) '(-1 1)))    ;=> (1 2)
(numbers (ssgetCP '(44 -1) '(45 -1) '(44 1)))            ;=> (3)
(list (ssgetCP) (ssgetCP '(0 0) '(1 1)) (ssgetCP '(100 100) '(101 100) '(100 101)))   ;=> (nil nil nil)
(numbers (ssgetC '(-1 -1) '(41 1)))                      ;=> (1 2 3)
(numbers (ssgetC '(41 1) '(-1 -1) '((0 . "CIRCLE"))))    ;=> (2)
(numbers (ssgetC '(-1 -1 0) '(41 1 0) nil))              ;=> (1 2 3)
(numbers (ssgetC '(-1 -1) '(41 1) '((10 20.0 0.0))))          ;=> (2)
(ssgetC '(-1 -1) '(41 1) '((0 . "ARC")))                 ;=> nil
(ssgetC '(-1 -1) '(41 1) '((-4 . "<OR")))                ;=> nil
(ssgetC '(0 0) "x")                                      ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(ssgetC)                                                 ;=> ; error: ADS request error
;| Wrong type of arguments passed.
; Sets are freed: far more selections than sets a host has room for
(progn (repeat 1000 (ssgetC '(-1 -1) '(41 1)) (ssgetC '(100 100) '(101 101))) (setq next (ssadd)) (sslength next))   ;=> 0
; One entity: picked, by keyword, missed, cancelled
(host-prompts)
(host-input '(5 0) "u" '(500 500) 'cancel 'enter)
(list (= (car (setq pick (kv_kv-entsel "\nPick: " "Undo eXit"))) (car known)) (cadr pick))   ;=> (T (5.0 0.0 0.0))
(kv_kv-entsel "\nPick: " "Undo eXit")                    ;=> "Undo"
(kv_kv-entsel "\nPick: ")                                ;=> T
(kv_kv-entsel "\nPick: ")                                ;=> nil
(kv_kv-entsel "\nPick: ")                                ;=> nil
(host-prompts)                                           ;=> ("\nPick: " "\nPick: " "\nPick: " "\nPick: " "\nPick: ")
(kv_kv-entsel)                                           ;=> ; error: ADS request error
;| Wrong type of arguments passed.
