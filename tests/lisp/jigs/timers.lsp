; Timers that give the main window back. A short one waits until nothing runs; a long one doesn't ask.
(defun enabled () (cadr (host-main-window)))
(kv_kv-disableAutoCADWindow)
(enabled)                                                ;=> nil
(setq timer (kv_kv-createJigTimer 9999))
(= (type timer) 'INT)                                    ;=> T
(progn (host-timers 20000) (host-timers 40000) (enabled))   ;=> nil
(kv_kv-killJigTimer timer)                               ;=> nil
(setq timer (kv_kv-createJigTimer 10000))
(progn (host-timers 9000) (enabled))                     ;=> nil
(progn (host-timers 10500) (enabled))                    ;=> T
(kv_kv-killJigTimer timer)                               ;=> nil
; The short one ticks while a drag waits, and lets the window be; it comes back when the call is over.
(defun wait (milliseconds / start)
  (setq start (getvar "MILLISECS"))
  (while (< (- (getvar "MILLISECS") start) milliseconds)))
(progn (kv_kv-disableAutoCADWindow) (kv_kv-createJigTimer 1) (wait 30) (host-input '(1 1)) (kv_kv-lineJig) (enabled))   ;=> nil
(wait 30)
(enabled)                                                ;=> T
; Killed, it doesn't
(progn (kv_kv-disableAutoCADWindow) (kv_kv-killJigTimer (kv_kv-createJigTimer 1)) (kv_kv-killJigTimer 0) (wait 30))
(enabled)                                                ;=> nil
(kv_kv-enableAutoCADWindow)
(kv_kv-createJigTimer "1")                               ;=> ; error: ADS request error
(kv_kv-killJigTimer)                                     ;=> ; error: ADS request error
