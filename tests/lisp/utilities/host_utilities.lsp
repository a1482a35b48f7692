; Boxes: a buttons' word wipes out the marks before it.
(progn (host-answer "YES" "NO" "OK") (host-boxes))
;=> nil
(zb_message_box "Title" "Text" '("!" "YESNO"))
;=> "YES"
(zb_message_box "Title" "Text" '("YESNO" "!" "DEF2" "other"))
;=> "NO"
(zb_message_box "Title" "Text")
;=> "OK"
(host-boxes)
;=> (("Title" "Text" 4 "YES") ("Title" "Text" 308 "NO") ("Title" "Text" 0 "OK"))
(zb_message_box "Title" "Nobody answers" '("YESNOCANCEL"))
;=> "CANCEL"
(zb_beep)
;=> T
(zb_message_beep 5)
;=> T

; Files
(setq folder (strcat (GetTempPath) "zarbo-lisp-" (CreateCompressedGuidString)))
(list (zb_mkdir folder) (zb_mkdir folder))
;=> (T nil)
(setq file (strcat folder "\\a.txt"))
(progn (setq f (open (strcat folder "/a.txt") "w")) (write-line "text" f) (close f) (zb_fdir (strcat folder "\\*.TXT")))
;=> ("a.txt")
(zb_fcopy file (strcat folder "/b.txt"))
;=> T
(zb_fcopyIfChanged file (strcat folder "/b.txt"))
;=> nil
(zb_fcopyIfChanged file (strcat folder "/missing.txt"))
;=> nil
(zb_fmove file (strcat folder "/b.txt"))
;=> nil
(zb_fdir (strcat folder "/*.*"))
;=> ("." ".." "a.txt" "b.txt")
(zb_fdelete 5)
;=> nil
(list (IsFileReadOnly file) (IsFileReadOnly (strcat folder "/missing")))
;=> (nil T)

; Archives
(CreateZip (strcat folder "/x.zip") (list file (strcat folder "/b.txt")))
;=> T
(ExtractZip (strcat folder "/x.zip") (strcat folder "/out"))
;=> T
(zb_fdir (strcat folder "/out/*.txt"))
;=> ("a.txt" "b.txt")
(ExtractZip file (strcat folder "/out2"))
;=> nil
(CreateZip (strcat folder "/y.zip") (list (strcat folder "/missing")))
;=> nil
(CreateZip (strcat folder "/y.zip") nil)
;=> T
(list (CreateZip "" (list file)) (CreateZip "/dev/null" nil) (CreateZip folder nil))
;=> (nil nil nil)
(DownloadFile "http://127.0.0.1:1/nothing" (strcat folder "/z"))
;=> nil
(zb_rmdir folder)
;=> nil
(mapcar '(lambda (name) (zb_fdelete (strcat folder name))) '("/a.txt" "/b.txt" "/x.zip" "/y.zip" "/out/a.txt" "/out/b.txt"))
;=> (T T T T T T)
(list (zb_rmdir (strcat folder "/out")) (zb_rmdir folder))
;=> (T T)

; Signatures
(setq signed (signString "message"))
(verifyString "message" (cdr (assoc "sPublicKey" signed)) (cdr (assoc "sSign" signed)))
;=> T
(verifyString "Message" (cdr (assoc "sPublicKey" signed)) (cdr (assoc "sSign" signed)))
;=> nil
(signString "message" (cdr (assoc "sPrivateKey" signed)))
;=> nil
(strlen (CreateCompressedGuidString))
;=> 22

; Window, settings, choosers
(progn (kv_kv-setAcadWindowText "A title") (kv_kv-disableAutoCADWindow) (kv_kv-enableAutoCADWindow) (kv_kv-getAcadWindowText))
;=> "A title"
(kv_kv-SHGetFolderPath "desktop")
;=> nil
(kv_kv-SHGetFolderPath "PROGRAM_FILES")
;=> "/opt"
(= (kv_kv-SHGetFolderPath "FLAG_CREATE") (kv_kv-SHGetFolderPath "DESKTOP"))
;=> T
(kv_kv-SHGetFolderPath 5)
;=> ; error: ADS request error
(RegEnumKey "HKEY_NOWHERE")
;=> nil
(list (PathIsNetworkPath "\\\\server\\share") (PathIsNetworkPath "C:\\a"))
;=> (T nil)
(progn (host-file "/chosen.dwg") (host-file nil) (CFileDialog T "Open" "/" "dwg;dxf"))
;=> "/chosen.dwg"
(CFileDialog nil "Save" "/tmp/plan.dwg" "dwg")
;=> nil
(progn (host-file "/folder") (XFolderDialog "Title" ""))
;=> "/folder"
(kv_kv-shellExecute "open" "/nowhere/at/all" "SHOW")
;=> nil
(kv_kv-shellExecute "open" "/nowhere/at/all")
;=> nil
(acedSetStatusBarProgressMeterPos 5)
;=> -1
(list (acedSetStatusBarProgressMeter "Work" 0 10) (acedSetStatusBarProgressMeterPos 5))
;=> (0 0)
(progn (acedRestoreStatusBar) (acedSetStatusBarProgressMeterPos 6))
;=> -1
(acedSetStatusBarProgressMeter "Work" 0)
;=> ; error: ADS request error
(list (GetSystemMetrics::SM_CXSCREEN) (GetSystemMetrics::SM_CYSCREEN))
;=> (1920 1080)
(kv_kv-SHOpenFolderAndSelect nil)
;=> ; error: ADS request error
(RegEnumKey "HKEY_LOCAL_MACHINE")
;=> nil
(RegEnumKey 5)
;=> nil
; The settings of the user are the branch of the current user.
(progn (setq f (open (strcat (getenv "ZARBO_SCRATCH") "/settings/settings.txt") "w"))
       (foreach name '("Software\\Maker\\Beta" "SOFTWARE\\maker\\alpha\\deep" "Software\\Maker" "Software\\Makers")
         (write-line (strcat "[" name "]") f))
       (close f) (RegEnumKey "HKEY_CURRENT_USER\\software\\MAKER"))
;=> ("alpha" "Beta")
(RegEnumKey "HKEY_CURRENT_USER")
;=> ("Software")
(list (RegEnumKey "HKEY_CURRENT_USER\\Software\\Maker\\Beta") (RegEnumKey "HKEY_CURRENT_USER\\Missing") (RegEnumKey "hkey_current_user"))
;=> (nil nil nil)

; The note of the drawing with work
(kv_kv-getToDoDrawing)
;=> ""
(progn (kv_kv-setToDoDrawing "a.dwg") (kv_kv-getToDoDrawing))
;=> "a.dwg"
