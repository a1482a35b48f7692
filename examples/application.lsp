;;; What an application that uses Zarbo supplies: the functions that the module calls back.

;;; Repairs the database at `path`: all that can be read goes into a new file beside it, which then
;;; takes its place; the damaged file is kept under the ending ".damaged". T when the database is
;;; whole again. `target` is nil when the repaired file shall bear the old name.
(defun compactDatabase (path target mode / repaired kept)
  (setq repaired (if target target (strcat path ".repaired"))
        kept (strcat path ".damaged"))
  (if (findfile repaired) (vl-file-delete repaired))
  (cond
    ((/= (zb_compact path repaired nil) "OK") nil)
    (target T)
    (T (if (findfile kept) (vl-file-delete kept))
       (and (vl-file-rename path kept)
            (vl-file-rename repaired path)))))
