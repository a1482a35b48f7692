; Points that the user gives
(host-prompts)
(host-input '(1 2 3) "4,5" 'enter 'cancel)
(kv_kv-getPoint "\nFrom: ")                              ;=> (1.0 2.0 3.0)
(kv_kv-getPoint)                                         ;=> (4.0 5.0 0.0)
(kv_kv-getPoint 5)                                       ;=> nil
(kv_kv-getPoint)                                         ;=> nil
(kv_kv-getPoint)                                         ;=> nil
(host-prompts)                                           ;=> ("\nFrom: " "" "" "" "")
; A bare Enter is refused, keywords come back as texts.
(host-input 'enter '(1 2) "x" "_undo" 'cancel)
(kv_kv-getPoint-withKWords "\nNext: " "Undo eXit")       ;=> (1.0 2.0 0.0)
(host-prompts)                                           ;=> ("\nNext: " "\nNext: ")
(kv_kv-getPoint-withKWords "\nNext: " "Undo eXit")       ;=> "eXit"
(kv_kv-getPoint-withKWords "\nNext: " "Undo eXit")       ;=> "Undo"
(kv_kv-getPoint-withKWords "\nNext: " "Undo eXit")       ;=> nil
(host-input "eXit" '(9 9))
(kv_kv-getPoint-withKWords)                              ;=> (9.0 9.0 0.0)
; The opposite corner lies at the base's height.
(host-input '(5 5 9) 'enter)
(kv_kv-getCorner '(0 0 1) "\nCorner: ")                  ;=> (5.0 5.0 1.0)
(kv_kv-getCorner '(0 0))                                 ;=> nil
(kv_kv-getCorner "\nCorner: ")                           ;=> ; error: ADS request error
;| Wrong type of arguments passed.
