;;; The runs of the duct plan in three dimensions: straight pieces, elbows, a takeoff with two taps, a transition, a wye
;;; and hangers, as solids.
;;;
;;;     ./run --support examples --support build/release/share examples/duct_solids.lsp --output ducts.png --view iso
;;;     ./run --support examples --support build/release/share examples/duct_solids.lsp --output ducts.ifc

(load (findfile "drafting.lsp"))
(zb_connect (findfile "standards.kv") "r")
(add-linetypes)
(setvar "CMDECHO" 0)
(setvar "INSUNITS" 1)   ; inches
(regapp "KORVANE")

;;; A section is (width height shape). A run goes from one point to another, and the fittings at its ends take their
;;; lengths off it.

(setq no-trim 0.0)
(defun triple (from to section start-trim end-trim)
  (append from to (list 0 start-trim end-trim (car section) (cadr section) (caddr section) 0.0 0.0 "" "" 0 1.0)))
(defun run (from to section) (triple from to section no-trim no-trim))

;;; What was drawn goes to the layer of its system, and bears the tag of its run.
(defun placed (entity / data)
  (if entity
    (entmod (append (subst (cons 8 duct-layer) (assoc 8 (setq data (entget entity))) data)
                    (list (list -3 (list "KORVANE" (cons 1000 "Tag") (cons 1000 tag)))))))
  entity)
(defun placed-all (fitting)
  (foreach key '("en1" "en2" "en3" "hanger") (placed (cdr (assoc key fitting))))
  fitting)
(defun length-of (key fitting) (cdr (assoc key fitting)))

(defun straight (from to section start-trim end-trim)
  (placed (kv_kv-drawTripleCenter nil 0 (triple from to section start-trim end-trim))))
(defun elbow (from corner to section square radius)
  (placed-all (kv_kv-drawTripleElbow nil 0 square radius (run from corner section) (run corner to section))))

;;; Straight pieces through the points with an elbow at each corner. Trims are what fittings take at the two ends.
(defun duct-through (points section square radius start-trim end-trim / fitting)
  (while (cddr points)
    (setq fitting (elbow (car points) (cadr points) (caddr points) section square radius))
    (straight (car points) (cadr points) section start-trim (length-of "dHeadLength" fitting))
    (setq start-trim (length-of "dTailLength" fitting)
          points (cdr points)))
  (straight (car points) (cadr points) section start-trim end-trim))

(defun hangers-along (from to count section / i heading)
  (setq i 0 heading (angle from to))
  (repeat count
    (placed-all
      (kv_kv-drawHanger (= (caddr section) "RD")
                        (mapcar '(lambda (a b) (+ a (* (- b a) (/ (+ i 0.5) count)))) from to)
                        heading (car section) (cadr section) (/= (caddr section) "RD") 0.75 1.0 ceiling 0))
    (setq i (1+ i))))

(setq ceiling 132.0
      main '(24.0 14.0 "SQ") tap '(10.0 10.0 "RD") narrow '(16.0 14.0 "SQ") side '(12.0 14.0 "SQ") round '(18.0 18.0 "RD"))

;;; The supply main, with two taps where the branches leave.
(setq duct-layer (layer-of "Supply Air" "Duct") tag "Supply main")
(setq begin '(0.0 0.0 100.0) junction '(120.0 0.0 100.0) corner '(240.0 0.0 100.0) bend '(300.0 120.0 100.0)
      change '(390.0 120.0 100.0) fork '(480.0 120.0 100.0)
      left '(120.0 100.0 100.0) right '(120.0 -90.0 100.0))
(setq takeoff (placed-all (kv_kv-drawTripleTakeoff nil 0 nil 0.0 (run begin junction main) (run junction corner main)
                                                   (run junction left tap) (run junction right tap))))
(straight begin junction main no-trim (length-of "dHeadLength" takeoff))
(setq first-bend (elbow junction corner bend main nil 36.0)
      second-bend (elbow corner bend change main nil 36.0)
      transition (placed-all (kv_kv-drawTripleTransition nil 0 (run bend change main) (run change fork narrow))))
(straight junction corner main (length-of "dTailLength1" takeoff) (length-of "dHeadLength" first-bend))
(straight corner bend main (length-of "dTailLength" first-bend) (length-of "dHeadLength" second-bend))
(straight bend change main (length-of "dTailLength" second-bend) no-trim)

;;; It ends in a wye.
(setq up '(570.0 190.0 100.0) down '(570.0 50.0 100.0))
(setq wye (placed-all (kv_kv-drawTripleWye nil 0 nil 0.0 (run change fork narrow) (run fork up side) (run fork down side))))
(straight change fork narrow (length-of "dTailLength" transition) (length-of "dHeadLength" wye))
(straight fork up side (length-of "dTailLength1" wye) no-trim)
(straight fork down side (length-of "dTailLength2" wye) no-trim)

;;; The branches: one to the side with a square elbow, one down to an outlet.
(setq tag "Supply branches")
(duct-through (list junction left '(190.0 100.0 100.0)) tap T 0.0 (length-of "dTailLength2" takeoff) no-trim)
(duct-through (list junction right '(120.0 -90.0 40.0)) tap nil 12.0 (length-of "dTailLength3" takeoff) no-trim)

;;; The return runs below.
(setq duct-layer (layer-of "Return Air" "Duct") tag "Return")
(duct-through '((420.0 -90.0 68.0) (420.0 60.0 68.0) (330.0 200.0 68.0) (330.0 260.0 68.0)) round nil 27.0 no-trim no-trim)

(setq duct-layer (layer-of "Supply Air" "Hanger") tag "Hangers")
(hangers-along begin '(100.0 0.0 100.0) 2 main)
(hangers-along '(150.0 0.0 100.0) '(210.0 0.0 100.0) 1 main)
(hangers-along '(320.0 120.0 100.0) '(390.0 120.0 100.0) 1 main)
(hangers-along '(420.0 -80.0 68.0) '(420.0 40.0 68.0) 2 round)

;;; What it comes to
(setq count 0 volume 0.0 entity (entnext))
(while entity
  (if (setq sums (host-solid entity)) (setq count (1+ count) volume (+ volume (cdr (assoc "volume" sums)))))
  (setq entity (entnext entity)))
(princ (strcat "\n" (itoa count) " solids with " (rtos (/ volume 1728.0) 2 1) " cubic feet in all\n"))
(princ)
