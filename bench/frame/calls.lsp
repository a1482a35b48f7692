; What a call of the module costs beside a call of the language: both raise a real to a power.
(load "bench/rows.lsp")
(setq rounds 10000)
(defun empty () (repeat rounds 2.0))
(defun builtin () (repeat rounds (expt 2.0 3.0)))
(defun module () (repeat rounds (kv::pow 2.0 3.0)))
(row "a call of the module" "the language's expt" builtin module empty rounds 6)
(princ)
