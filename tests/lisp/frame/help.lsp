; What help tells of the module's functions is what the module tells of them.
(defun told (name) (host-output) (help name) (host-output))
(told "zb_mdb")
(told 'ZB_SEEK)
(wcmatch (told "kv::pow") "*function of the module zarbo*(kv`:`:pow *) -> *")
(wcmatch (told "zb_see") "*ZB_SEEK*")                    ;=> T
