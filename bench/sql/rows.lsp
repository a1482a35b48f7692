; A table of 100,000 rows by 8 columns into a LISP list, five times.
(zb_connect (getenv "ZARBO_BENCH") "r")
(repeat 5
  (setq rows nil)
  (setq start (getvar "MILLISECS"))
  (setq rows (zb_sql "SELECT * FROM Many"))
  (princ (strcat "zb_sql into a LISP list: " (itoa (- (getvar "MILLISECS") start)) " ms, " (itoa (length rows)) " rows\n")))
(princ)
