;;; Solids in files, as proxies without their module, and handed on to other programs.
(load "words.lsp")
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))

(setq e (kv_kv-drawTripleCenter nil 0 (run '(0 0 0) '(100 0 0) 20.0 20.0 "RD")))
(setq f (kv_kv-drawTripleCenter nil 0 (run '(50 -40 0) '(50 40 0) 12.0 12.0 "RD")))
(kv_kv-tripleUnion e f)
(AcDbEntity::setColor e 3)
(regapp "KORVANE")
(entmod (append (entget e) '((-3 ("KORVANE" (1000 . "Tag") (1000 . "D-1") (1000 . "Flow") (1040 . 250.5))))))
(vl-bb-set 'before (host-solid e))
(vl-bb-set 'handle (cdr (assoc 5 (entget e))))
(get "bodies" (vl-bb-ref 'before))                           ;=> 1
(progn (foreach name '("solids.dxf" "solids.dwg" "last.dwg") (host-saveas (path name))) (princ))

(progn (host-open (strcat (getenv "ZARBO_SCRATCH") "/solids.dxf")) (princ))
(equal (host-solid (handent (vl-bb-ref 'handle))) (vl-bb-ref 'before))  ;=> T
(cdr (assoc 62 (entget (handent (vl-bb-ref 'handle)))))      ;=> 3
(progn (host-open (strcat (getenv "ZARBO_SCRATCH") "/solids.dwg")) (princ))
(equal (host-solid (handent (vl-bb-ref 'handle))) (vl-bb-ref 'before))  ;=> T

;; Without the module it is a proxy, which is filed as it came; with it, it is itself again.
(setq e (handent (vl-bb-ref 'handle)))
(progn (arxunload "kv_kv-solidBrx21x64.arx") (princ))
(list (cdr (assoc 0 (entget e))) (host-solid e))             ;=> ("KV_HVACSOLID" nil)
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-drawTripleSkin '(1.0 ((0 0 0) (4 0 0) (0 4 0)))))  ;=> T
(type (kv_kv-getTripleCoord '(0 0 0 1 0 0 0 0.0 0.0 1.0 1.0 "" 0.0 0.0 "" "" 0 1.0)))  ;=> LIST
(progn (host-saveas (strcat (getenv "ZARBO_SCRATCH") "/proxy.dxf")) (arxload "kv_kv-solidBrx21x64.arx") (princ))
(equal (host-solid e) (vl-bb-ref 'before))                   ;=> T
(progn (host-open (strcat (getenv "ZARBO_SCRATCH") "/proxy.dxf")) (princ))
(equal (host-solid (handent (vl-bb-ref 'handle))) (vl-bb-ref 'before))  ;=> T

;; Handed on: a file of each kind, and none for endings that mean nothing.
(setvar "CMDECHO" 0)
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(foreach ending '("ifc" "step" "stl" "glb" "dxf") (command "EXPORT" (path (strcat "out." ending))))
(mapcar '(lambda (ending) (if (findfile (path (strcat "out." ending))) T)) '("ifc" "step" "stl" "glb" "dxf"))  ;=> (T T T T T)
(vl-cmdf "EXPORT" (path "out.xyz"))                          ;=> nil
(findfile (path "out.xyz"))                                  ;=> nil
(defun lines-with (file part / stream line count)
  (setq stream (open (path file) "r") count 0)
  (while (setq line (read-line stream)) (if (vl-string-search part line) (setq count (1+ count))))
  (close stream)
  count)
(list (lines-with "out.ifc" "IFCDUCTSEGMENT(") (lines-with "out.ifc" "IFCFACETEDBREP(") (lines-with "out.ifc" "'Tag',$,IFCTEXT('D-1')"))  ;=> (1 1 1)
(lines-with "out.step" "FACETED_BREP(")                      ;=> 1
(lines-with "out.dxf" "AcDbSubDMesh")                        ;=> 1
(command "ERASE" "ALL" "")
(vl-cmdf "EXPORT" (path "empty.ifc"))                        ;=> nil
(findfile (path "empty.ifc"))                                ;=> nil
