; The example draws on layers that it makes by their keys: nothing of it lies on layer 0.
(setq share (getenv "ZARBO_SHARE"))
(defun findfile (name) (strcat share (if (wcmatch name "*.lsp") "/../../../examples/" "/") name))
(load (findfile "floor_plan.lsp"))
;| Drawn on 40 layers of the standards
(sslength (ssget "X" '((8 . "H-*"))))               ;=> 83
(ssget "X" '((8 . "0")))                            ;=> nil
(mapcar '(lambda (name) (cdr (assoc 6 (tblsearch "LAYER" name)))) '("H-SA-CNTR" "L-LN-SLEG" "P-SS-BELW" "E-PN-UGND"))  ;=> ("CENTER" "DASHED2" "HIDDEN" "DASHED")
(layer-of "Supply Air" "No Such Key")               ;=> "0"
