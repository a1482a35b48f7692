; Layers made from the connected standards. Without a connection only the drawing's own layers are known.
(kv_kv-createLayer "0")                             ;=> T
(kv_kv-createLayer "G-NOTE")                        ;=> nil
(zb_connect (strcat (getenv "ZARBO_SHARE") "/standards.kv") "r")  ;=> T
(host-trace)
; The row is sought by its name; the layer bears the row's spelling.
(kv_kv-createLayer "g-note")                        ;=> T
(host-trace)                                        ;=> (("SetTable" "tblLayer" "sName") ("Seek1" "g-note"))
(setvar "CLAYER" "g-note")
(getvar "CLAYER")                                   ;=> "G-NOTE"
; A layer that is there is only unlocked: the standards aren't asked.
(kv_kv-createLayer "G-Note")                        ;=> T
(host-trace)                                        ;=> nil
(kv_kv-createLayer "NO SUCH LAYER")                 ;=> nil
(kv_kv-createLayer 5)                               ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-createLayer)                                 ;=> ; error: ADS request error
;| Wrong type of arguments passed.
; Each drawing has its own layers, and from its first database call on its own standards.
(host-new "Second.dwg")
(zb_mdb)                                            ;=> nil
(kv_kv-createLayer "G-NOTE")                        ;=> nil
