; LAYER: every option, lists of names with wildcards, refusals, undo.
(setvar "CMDECHO" 0)
; What was added since the last call: types with the values of the codes.
(defun added (codes / all e)
  (setq e seen)
  (while (setq e (if e (entnext e) (entnext)))
    (setq all (cons (cons (cdr (assoc 0 (entget e))) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) codes)) all)))
  (setq seen (entlast))
  (reverse all))
; Whether a command says something, however it goes on.
(defun says (text words) (setvar "CMDECHO" 1) (host-output) (apply 'vl-cmdf words) (command) (setvar "CMDECHO" 0) (if (vl-string-search text (host-output)) T))
(defun line (a b) (entmake (list '(0 . "LINE") (cons 10 a) (cons 11 b))) (entlast))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))
(defun layer (name) (mapcar '(lambda (c) (cdr (assoc c (tblsearch "LAYER" name)))) '(62 70 6)))
(progn (command "LAYER" "N" "A,B,,A" "") (list (layer "A") (layer "B")))   ;=> ((7 0 "Continuous") (7 0 "Continuous"))
(progn (command "LAYER" "C" "2" "A" "C" "T" "10,20,30" "B" "") (list (layer "A") (cdr (assoc 420 (entget (tblobjname "LAYER" "B"))))))   ;=> ((2 0 "Continuous") 660510)
(progn (command "LAYER" "OFF" "A" "F" "A" "LO" "A" "") (layer "A"))     ;=> (-2 5 "Continuous")
(progn (command "LAYER" "ON" "A" "T" "A" "U" "A" "") (layer "A"))       ;=> (2 0 "Continuous")
; Enter is the current layer, and keeps what it is.
(progn (command "LAYER" "OFF" "" "") (layer "0"))                       ;=> (-7 0 "Continuous")
(progn (command "LAYER" "ON" "0" "LT" "" "A" "COLOUR" "red" "a?,a" "") (list (layer "0") (layer "A")))   ;=> ((7 0 "Continuous") (1 0 "Continuous"))
(mapcar '(lambda (words) (says (car words) (append '("LAYER") (cdr words) '(""))))
  '(("Invalid color." "C" "puce") ("Invalid color." "C" "257") ("Invalid color." "C" "T" "1,2") ("Invalid color." "C" "T" "1,2,256")
    ("Invalid color." "C" "BYLAYER") ("Invalid color." "C" "0")
    ("Linetype \"nope\" not found." "LT" "nope") ("Invalid layer name." "N" "a<b") ("Cannot find layer \"nope\"." "S" "nope")
    ("No matching layer names found." "C" "1" "XYZ*") ("Invalid option keyword." "Q")))   ;=> (T T T T T T T T T T T)
(progn (command "LAYER" "M" "new one" "") (getvar "CLAYER"))            ;=> "new one"
(says "Cannot freeze layer \"new one\".  It is the CURRENT layer." '("LAYER" "F" "*" ""))   ;=> T
(list (layer "new one") (layer "A"))                                    ;=> ((7 0 "Continuous") (1 1 "Continuous"))
(progn (command "U") (layer "A"))                                       ;=> (1 0 "Continuous")
(progn (command "LA" "S" "0" "M" "Gone" "") (command "U") (list (getvar "CLAYER") (tblsearch "LAYER" "Gone")))   ;=> ("new one" nil)
