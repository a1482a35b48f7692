; What the dialogs ask of the engine and of the application, call by call in their order.
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(zb_connect file "w")
(foreach table '("tblLayerKey" "tblLayerSystem" "tblLayer" "tblTextStyle" "tblLabelGroup") (zb_command (strcat "delete from " table)))
(foreach name '("A-1" "B-2") (zb_command (strcat "insert into tblLayer (sName, iColor, sLinetype, bPlot) values ('" name "', 3, 'CONTINUOUS', True)")))
(foreach name '("Air" "Water") (zb_command (strcat "insert into tblLayerSystem (sDescription, iSortOrder) values ('" name "', 5)")))
(defun number (sql) (cdr (caar (zb_sql sql))))
(setq a (number "select ixLayer from tblLayer where sName = 'A-1'") b (number "select ixLayer from tblLayer where sName = 'B-2'")
      air (number "select ixLayerSystem from tblLayerSystem where sDescription = 'Air'")
      water (number "select ixLayerSystem from tblLayerSystem where sDescription = 'Water'"))
(foreach row (list (list "null" a "Note") (list "null" b "Hidden") (list (itoa air) a "Duct"))
  (zb_command (strcat "insert into tblLayerKey (ixLayerSystem, ixLayer, sKey) values (" (car row) ", " (itoa (cadr row)) ", '" (caddr row) "')")))
(defun key-counter (name) (number (strcat "select ixLayerKey from tblLayerKey where sKey = '" name "'")))
(setq note (key-counter "Note") duct (key-counter "Duct"))
(zb_command "insert into tblTextStyle (sKey, sStyleName, dHeight) values ('Default', 'Standard', 0.1)")
(zb_command "insert into tblTextStyle (sKey, sStyleName, dHeight) values ('Title', 'O''Hare', null)")
(foreach key '("Schedule Title" "Tag") (zb_command (strcat "insert into tblLabelGroup (sGroup, sKey, sLabel, dWidth, sJustification, bDisplay, iSortOrder) values ('G', '" key "', 'x', 1.5, '', True, 1)")))
(setq title (number "select ixTextStyle from tblTextStyle where sKey = 'Title'") default (number "select ixTextStyle from tblTextStyle where sKey = 'Default'")
      head (number "select ixLabelGroup from tblLabelGroup where sKey = 'Schedule Title'") tag (number "select ixLabelGroup from tblLabelGroup where sKey = 'Tag'"))
(zb_close_db)
; The application's functions stand among the engine's calls.
(setq calls nil)
(defun called (call) (setq calls (append calls (host-trace) (list call))))
(defun util-layerKeySetElecGlobals (path) (called (list "globals" (= path file))))
(defun util-showLayerKey (key) (called (list "show" key)) (/= key "Hidden"))
(defun util-createLayerKeySortText (key) (called (list "sort" key)) key)
(defun util-LayerkeyRename (key) (called (list "name" key)) key)
(defun util-createPipeLabels (new source) (called (list "create" new source)))
(defun util-deletePipeLabels (system) (called (list "delete" system)))
(defun util-layersystemoptions (system path) (called (list "options" system (= path file))))
(defun util-exportLayerSystem-noName (system path) (called (list "export" system (= path file))))
(defun util-importLayerSystem-noName (system path) (called (list "import" system (= path file))) T)
(defun util-showTextStyle (key) (called (list "show" key)) T)
(defun hvac-getPatList () (called '("patterns")) nil)
; The calls of a walk through a table, of a search by the counter, and of a row that is changed
(defun here (table) (list "SetTable" table ""))
(defun walk (table index count / all)
  (setq all (list (list "SetTable" table index) (here table) '("MoveTop") (here table) '("PositionFlagA")))
  (repeat count (setq all (append all (list (here table) '("Skip" 1) (here table) '("PositionFlagA")))))
  all)
(defun index-of (table) (list "SetTable" table (strcat "ix" (substr table 4))))
(defun find (table counter) (list (index-of table) (list "Seek1" counter)))
(defun change (table counter) (append (find table counter) (find table counter) '(("Replace" nil))))
(defun add (table) (list (index-of table) '("Append" nil 0)))
(defun statement (text) (list (list "ExecuteStatement" text)))
; Of the parts of the layers dialog; keys as (name . layer)
(defun keys-of (system keys / all)
  (setq all (list (list "ExecuteSql" (strcat "select ixLayerKey, ixLayer, sKey from tblLayerKey where ixLayerSystem "
                                             (if (= system -1) "is Null" (strcat "= " (itoa system))) " order by sKey"))))
  (foreach key keys
    (setq all (append all (list '("DatabaseName") '("globals" T) (list "show" (car key)))
                      (if (/= (car key) "Hidden") (append (list (list "sort" (car key)) (list "name" (car key))) (find "tblLayer" (cdr key)))))))
  all)
(setq layers 2 systems 2 general (list (cons "Hidden" b) (cons "Note" a)))
(defun opened () (append (list (list "OpenPrivate" file)) (walk "tblLayer" "sName" layers) (walk "tblLayer" "sName" layers)
                         (walk "tblLayerSystem" "iSortOrder" systems) (keys-of -1 general)))
(defun saved-keys (counters) (cons (index-of "tblLayerKey") (apply 'append (mapcar '(lambda (each) (change "tblLayerKey" each)) counters))))
; Where what was done differs from what was told; nil for nowhere
(defun differs (wanted found / place)
  (setq place 0)
  (while (and wanted found (equal (car wanted) (car found))) (setq wanted (cdr wanted) found (cdr found) place (1+ place)))
  (if (or wanted found) (list place (car wanted) (car found))))
(defun done (run) (host-trace) (setq calls nil) (eval run) (append calls (host-trace)))
(defun layers-differ (actions wanted)
  (apply 'host-dialog actions)
  (differs (append (opened) wanted '(("CloseDatabase"))) (done '(kv_kv-customizeLayers file))))
; Cancel, and OK: systems from the header on, the keys, the layers from the header on
(layers-differ '(("click" 2)) nil)  ;=> nil
(defun written () (append (find "tblLayerSystem" 0) (find "tblLayerSystem" -1) (change "tblLayerSystem" air) (change "tblLayerSystem" water)
                          (saved-keys (list note))
                          (cons (index-of "tblLayer") (find "tblLayer" 0)) (change "tblLayer" a) (change "tblLayer" b)))
(layers-differ '(("click" 1)) (written))  ;=> nil
; Another system, and General again; options, by the button
(layers-differ '(("select" 1051 2) ("select" 1051 1) ("click" 2))
               (append (saved-keys (list note)) (keys-of air (list (cons "Duct" a))) (saved-keys (list duct)) (keys-of -1 general)))  ;=> nil
(layers-differ '(("select" 1051 3) ("click" 1062) ("click" 2))
               (append (saved-keys (list note)) (keys-of water nil) (list '("DatabaseName") (list "options" water T)) (find "tblLayerSystem" water)))  ;=> nil
; Export saves first; import doesn't, and reads all again but for General's keys. The undo of keys asks nothing.
(layers-differ '(("click" 1053) ("click" 1064) ("click" 1061) ("click" 1063) ("click" 2))
               (append (saved-keys (list note)) '(("DatabaseName") ("export" -1 T) ("DatabaseName") ("import" -1 T))
                       (walk "tblLayer" "sName" 2) (walk "tblLayer" "sName" 2) (walk "tblLayer" "sName" 2)))  ;=> nil
; A layer is made, renamed and deleted at once.
(setq made (+ b 1))
(layers-differ '(("click" 1060) ("click" 2))
               (append (add "tblLayer") (list (here "tblLayer") '("MoveBottom")) (walk "tblLayer" "sName" 3)))  ;=> nil
(setq layers 3)
(layers-differ '(("cell" 1050 3 1 "C-3") ("click" 2)) (append (walk "tblLayer" "sName" 3) (change "tblLayer" made)))  ;=> nil
(host-answer "OK")
(layers-differ '(("cell" 1050 3 1 "C*3") ("click" 2)) (append (walk "tblLayer" "sName" 3) (find "tblLayer" made)))  ;=> nil
; A name that another layer has: the search ends there, and the old name is written again.
(host-answer "OK")
(layers-differ '(("cell" 1050 3 1 "a-1") ("click" 2))
               (append (walk "tblLayer" "sName" 0) (find "tblLayer" made) (change "tblLayer" made)))  ;=> nil
(host-answer "YES" "YES")
(defun users (layer) (list (list "ExecuteSql" (strcat "select ixLayerKey from tblLayerKey where ixLayer = " (itoa layer)))))
(layers-differ '(("select" 1050 3) ("click" 1057) ("click" 1080) ("click" 2))
               (append (users made) (find "tblLayer" made) (list (index-of "tblLayer")) (find "tblLayer" made) '(("DeleteRecord"))
                       (walk "tblLayer" "sName" 2)
                       (statement "delete from tblLayer where ixLayer not in (select ixLayer from tblLayerKey)")
                       (walk "tblLayer" "sName" 2) (walk "tblLayer" "sName" 2)))  ;=> nil
(setq layers 2)
; A system is made at once with a copy of the keys of another, and goes after its keys.
(setq gas (1+ water))
(progn
  (host-dialog '("click" 1058) '("click" 2))
  (host-dialog '("set" 2006 "Gas") '("click" 1))
  (differs (append (opened) (add "tblLayerSystem")
                   (statement (strcat "insert into tblLayerKey(ixLayerSystem, ixLayer, sKey) select " (itoa gas) ", ixLayer, sKey from tblLayerKey where ixLayerSystem = " (itoa air)))
                   (list (list "create" gas air)) (saved-keys (list note)) (keys-of gas (list (cons "Duct" a))) '(("CloseDatabase")))
           (done '(kv_kv-customizeLayers file))))  ;=> nil
(setq systems 3)
(host-answer "YES")
(layers-differ '(("select" 1051 4) ("click" 1059) ("click" 2))
               (append (saved-keys (list note)) (keys-of gas (list (cons "Duct" a)))
                       (statement (strcat "delete from tblLayerKey where ixLayerSystem = " (itoa gas))) (list (list "delete" gas))
                       (statement (strcat "delete from tblLayerSystem where ixLayerSystem = " (itoa gas)))))  ;=> nil
; The options of a system; a row that isn't there is not written where ducts are concerned.
(defun options-differ (function system actions wanted)
  (apply 'host-dialog actions)
  (differs (append (list (list "OpenPrivate" file)) wanted '(("CloseDatabase"))) (done (list function 'file system))))
(setq row (find "tblLayerSystem" air))
(options-differ 'kv_kv-LayerSystemOptionsPlumb air '(("click" 2)) row)  ;=> nil
(options-differ 'kv_kv-LayerSystemOptionsPlumb air '(("click" 1)) (append row (change "tblLayerSystem" air)))  ;=> nil
(options-differ 'kv_kv-LayerSystemOptionsHVAC air '(("click" 1)) (append row '(("patterns")) row (change "tblLayerSystem" air)))  ;=> nil
(options-differ 'kv_kv-LayerSystemOptionsHVAC 999 '(("click" 1))
                (append (find "tblLayerSystem" 999) '(("patterns")) (find "tblLayerSystem" 999) (find "tblLayerSystem" 999)))  ;=> nil
(host-dialog '("click" 1))
(differs (append (list (list "OpenPrivate" file)) row (change "tblLayerSystem" air) '(("CloseDatabase"))) (done '(kv_kv-LayerSystemOptionsElec "Photo" file air)))  ;=> nil
; Text styles: read by the cursor, written by a statement each, as typed
(setq shown (list (list "OpenPrivate" file) '("SetTable" "tblTextStyle" "sKey") '("MoveTop") '("Skip" 1) '("Skip" 1) '("show" "Default") '("show" "Title")))
(host-dialog '("cell" 1048 2 3 "high") '("click" 1))
(differs (append shown
                 (statement (strcat "update tblTextStyle set sStyleName = 'Standard', dHeight = 0.1, dScaleFactor = NULL where ixTextStyle = " (itoa default)))
                 (statement (strcat "update tblTextStyle set sStyleName = 'O''Hare', dHeight = high, dScaleFactor = NULL where ixTextStyle = " (itoa title)))
                 '(("CloseDatabase")))
         (done '(kv_kv-customizeTextStyles file nil)))  ;=> nil
; Labels: read by the drawing's connection, the header's statement first
(defun labels-differ (word wanted)
  (host-dialog '("click" 1))
  (differs (append (list (list "ExecuteSql" "select ixLabelGroup, sKey, sLabel, dWidth, sJustification, bDisplay from tblLabelGroup where sGroup = 'G' order by iSortOrder")) wanted)
           (vl-remove '("IsConnected") (done (list 'kv_kv-customizeLabelGroup "G" word nil nil)))))
(defun label (sets counter) (statement (strcat "update tblLabelGroup set sLabel = " sets " where ixLabelGroup = " counter)))
(zb_connect file "w")
(labels-differ "W" (append (label "'Label', dWidth = Width, sJustification = 'Justification', bDisplay = -1, iSortOrder = 0" "ixLabelGroup")
                           (label "'x', dWidth = NULL, sJustification = 'Left', bDisplay = -1, iSortOrder = -1" (itoa head))
                           (label "'x', dWidth = 1.5, sJustification = 'Left', bDisplay = -1, iSortOrder = 2" (itoa tag))))  ;=> nil
(labels-differ "SAME" (append (label "'Label', dWidth = Width, bDisplay = -1, iSortOrder = 0" "ixLabelGroup")
                              (label "'x', dWidth = NULL, bDisplay = -1, iSortOrder = -1" (itoa head))
                              (label "'x', dWidth = 1.5, bDisplay = -1, iSortOrder = 2" (itoa tag))))  ;=> nil
(labels-differ "" (append (label "'Label', bDisplay = -1, iSortOrder = 0" "ixLabelGroup")
                          (label "'x', bDisplay = -1, iSortOrder = -1" (itoa head))
                          (label "'x', bDisplay = -1, iSortOrder = 2" (itoa tag))))  ;=> nil
(zb_close_db)
