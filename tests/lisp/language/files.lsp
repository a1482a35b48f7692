(setq path (strcat (getenv "ZARBO_SCRATCH") "/lines.txt"))
(setq f (open path "w"))
(type f)                                  ;=> FILE
(write-line "first ä" f)                  ;=> "first ä"
(princ '("x" 1.5) f)
(write-char 10 f)                         ;=> 10
(close f)                                 ;=> nil
(vl-catch-all-error-p (vl-catch-all-apply 'write-line (list "late" f)))   ;=> T
(setq f (open path "r"))
(read-char f)                             ;=> 102
(read-line f)                             ;=> "irst ä"
(read-line f)                             ;=> "(x 1.5)"
(read-line f)                             ;=> nil
(close f)                                 ;=> nil
(open "/no/such/file" "r")                ;=> nil
(vl-file-size path)                       ;=> 17
(vl-filename-base "/a/b.c/d.e.txt")       ;=> "d.e"
(vl-filename-directory "/a/b/c.txt")      ;=> "/a/b"
(vl-filename-extension "x.lsp")           ;=> ".lsp"
(vl-filename-extension "/a.b/x")          ;=> nil
(setq copy (strcat (getenv "ZARBO_SCRATCH") "/copy.txt"))
(vl-file-copy path copy)                  ;=> 17
(vl-file-copy path copy)                  ;=> nil
(vl-file-copy path copy T)                ;=> 17
(vl-file-size copy)                       ;=> 34
(vl-directory-files (getenv "ZARBO_SCRATCH") "*.TXT" 1)   ;=> ("copy.txt" "lines.txt")
(vl-file-rename copy (strcat copy "2"))   ;=> T
(vl-file-delete (strcat copy "2"))        ;=> T
(vl-file-delete copy)                     ;=> nil
(vl-mkdir (strcat (getenv "ZARBO_SCRATCH") "/sub"))       ;=> T
(load "no-such-file" 5)                   ;=> 5
(setq f (open path "w"))
(write-line "(setq loaded 7)" f)
(write-line "(car 1" f)
(close f)
(vl-catch-all-error-p (vl-catch-all-apply 'load (list path)))   ;=> T
loaded                                    ;=> 7
(numberp (vl-string-search "line 2" (vl-catch-all-error-message (vl-catch-all-apply (quote load) (list path)))))   ;=> T
(= (vl-filename-mktemp "once.tmp") (vl-filename-mktemp "once.tmp"))   ;=> nil
; A full disk takes no more: the writing functions answer nil, and the system's reason is told.
(setq full (open "/dev/full" "w") line "a line of sixty-three letters, of which the buffer holds some....")
(setvar "ERRNO" 0)
(setq answers nil)
(repeat 1000 (setq answers (cons (null (write-line line full)) answers)))
(list (type (member T answers)) (getvar "ERRNO"))   ;=> (LIST 28)
(close full)                              ;=> nil
(setq full (open "/dev/full" "w"))
(setvar "ERRNO" 0)
(princ "x" full)                          ;=> "x"
(close full)                              ;=> nil
;| /dev/full: No space left on device
(getvar "ERRNO")                          ;=> 28
(vl-file-copy path "/dev/full" T)         ;=> nil
;| /dev/full: No space left on device
