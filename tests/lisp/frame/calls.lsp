; The road of a call: wrapper, guard, body, result.
(asin 0.5)                          ;=> 0.523599
(acos 2.0)                          ;=> nan
(kv::pow 2.0 10.0)                  ;=> 1024.0
(kv::pow 2.0 10)                    ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_atof "12abc")                   ;=> 12.0
(kv_atof "1d3")                     ;=> 1000.0
(kv_atof "text")                    ;=> 0.0
(kv_atof 5)                         ;=> nil
(< -1 (kv_kv-rand 10) 10)           ;=> T
(vl-every '(lambda (n) (and (= (type n) 'INT) (<= 0 n 32767))) (list (kv_kv-rand) (kv_kv-rand) (zb_random) (zb_random)))   ;=> T
; The four codes of a body
(zb_table)                          ;=> nil
(zb_fcopy "a")                      ;=> ; error: ADS request error
;| Too few arguments passed.
(zb_mkdir 1)                        ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(vl-catch-all-error-message (vl-catch-all-apply 'asin '("x")))   ;=> "ADS request error"
; Names are without case, functions are values.
(ASIN 0.0)                          ;=> 0.0
(mapcar 'asin '(0.0 1.0))           ;=> (0.0 1.5708)
(type asin)                         ;=> EXRXSUBR
; Both tables are there in each drawing.
(length (vl-remove nil (mapcar 'boundp '(zb_append zb_relationInfo kv_kv-rand kv_kv-safeContinue AcDb2dPolyline::setCurveType))))   ;=> 5
(host-new "Second.dwg")             ;=> "Second.dwg"
;| Loading Korvane Zarbo (Jet64)
(asin 0.5)                          ;=> 0.523599
(host-documents)                    ;=> ("Drawing1.dwg" "Second.dwg")
(setq here 1)                       ;=> 1
(host-activate "Drawing1.dwg")      ;=> "Drawing1.dwg"
here                                ;=> nil
(host-close "Second.dwg")           ;=> T
; Unloaded, the functions are gone; loaded again, they are back.
(arxunload "zarbo")                 ;=> "zarbo"
asin                                ;=> nil
(asin 0.5)                          ;=> ; error: no function definition: ASIN
(arxload "zarbo")                   ;=> "zarbo"
;| Loading Korvane Zarbo (Jet64)
(arxload "zarbo.so")                ;=> "zarbo.so"
(asin 0.5)                          ;=> 0.523599
(arxload "no-such-module" 'failed)  ;=> FAILED
