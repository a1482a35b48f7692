; The example knows its runs as numbers; the module finds where they cross.
(setq share (getenv "ZARBO_SHARE"))
(defun findfile (name) (strcat share (if (wcmatch name "*.lsp") "/../../../examples/" "/") name))
(load (findfile "duct_plan.lsp"))
;| The runs cross 2 times
(mapcar '(lambda (each) (mapcar '(lambda (x) (atof (rtos x 2 3))) (list (cadr each) (caddr each)))) found)
;=> ((60.0 0.0) (381.429 120.0))
; Corners are arcs tangent to both sides: the run's length is that of its points less what the elbows save.
(mapcar 'car supply)                                      ;=> (LINE ARC LINE ARC LINE)
(equal (point-along (nth 1 supply) (* (nth 4 (nth 1 supply)) (nth 5 (nth 1 supply)))) (nth 1 (nth 2 supply)) 1e-8)   ;=> T
; Leaders have their block from a drawing file, bodies lie below the edges, groups hold whole runs.
(sslength (ssget "X" '((0 . "KVLEADER"))))                ;=> 2
(list (cdr (assoc 2 (tblsearch "BLOCK" "DuctTag"))) (cdr (assoc 2 (tblsearch "BLOCK" "FlowArrow"))))   ;=> ("DuctTag" "FlowArrow")
(length (vl-remove-if-not '(lambda (pair) (= (car pair) 340)) (entget (kv_kv-GetGroup "Supply main"))))   ;=> 16
(mapcar '(lambda (pair) (cdr pair)) (list (assoc 43 (entget low)) (assoc 62 (entget low))))   ;=> (12.0 254)
