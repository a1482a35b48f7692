; A table of 100,000 rows by 8 columns into a LISP list, as often as (getenv "ROUNDS") says.
(zb_connect (getenv "ZARBO_BENCH") "r")
(repeat (atoi (getenv "ROUNDS")) (setq rows nil rows (zb_sql "SELECT * FROM Many")))
(princ)
