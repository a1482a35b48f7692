; Files that are no database, damage and repair, compaction.
(setq folder (getenv "ZARBO_SCRATCH")
      standards (strcat (getenv "ZARBO_SHARE") "/standards.kv")
      text (strcat folder "/text.kv")
      damaged (strcat folder "/damaged.kv"))
(setq f (open text "w"))
(write-line "this is no database, whatever its name says" f)
(close f)
(zb_connect text "w")                               ;=> nil
(substr (zb_lastError) 1 7)                         ;=> "(3343) "
(zb_connect text "w" T)                             ;=> ; error: ADS request error
(zb_connect folder "w")                             ;=> nil
(vl-file-size text)                                 ;=> 44
; Compaction gives "OK" or the error's number; with the flag left out, a box tells of the failure.
(defun makeFile (name) (setq f (open (strcat folder name) "w")) (write-line "mine" f) (close f))
(mapcar 'makeFile '("/compact.kv.new" "/compact.kv.mended"))
(zb_compact standards (strcat folder "/compact.kv"))            ;=> "OK"
(zb_compact (strcat (getenv "ZARBO_SHARE") "/damaged.kv") (strcat folder "/mended.kv"))      ;=> "OK"
(vl-directory-files folder "*.*" 1)                 ;=> ("compact.kv" "compact.kv.mended" "compact.kv.new" "forms.lsp" "mended.kv" "text.kv")
(vl-file-size (strcat folder "/compact.kv.new"))    ;=> 5
(zb_connect (strcat folder "/compact.kv") "w")      ;=> T
(zb_table "tblLayer" "sName")                       ;=> "tblLayer"
(zb_count)                                          ;=> 240
(zb_close_db)                                       ;=> nil
(zb_compact 1 2)                                    ;=> ; error: ADS request error
(zb_compact standards)                              ;=> ; error: ADS request error
;| Too few arguments passed.
(host-boxes)                                        ;=> nil
(zb_compact text (strcat folder "/none.kv") nil)    ;=> 3343
(host-boxes)                                        ;=> nil
(host-answer "OK")
(zb_compact text (strcat folder "/none.kv"))        ;=> 3343
(caar (host-boxes))                                 ;=> "Database Error"
(findfile (strcat folder "/none.kv"))               ;=> nil
; A damaged file asks the application for its repair, once.
(load (strcat (getenv "ZARBO_SHARE") "/../../../examples/application.lsp"))
(setq repairs 0)
(setq own-compact compactDatabase)
(defun compactDatabase (path target mode) (setq repairs (1+ repairs)) (own-compact path target mode))
(vl-file-copy (strcat (getenv "ZARBO_SHARE") "/damaged.kv") damaged T)
(zb_connect damaged "w")                            ;=> T
repairs                                             ;=> 1
(zb_table "tblLayer" "sName")                       ;=> "tblLayer"
(> (zb_count) 0)                                    ;=> T
(zb_close_db)
; When the application can't repair, nothing is connected.
(defun compactDatabase (path target mode) (setq repairs (1+ repairs)) nil)
(setq again (strcat folder "/again.kv"))
(vl-file-copy (strcat (getenv "ZARBO_SHARE") "/damaged.kv") again T)
(zb_connect again "w")
repairs                                             ;=> 2
