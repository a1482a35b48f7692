#pragma once

#include "interfaces/function_help.h"

/// One line for each row of the table of all other functions, in its order.
// clang-format off
inline constexpr FunctionHelp kvHelp[] = {
    {L"ed_editMultilineText", L"text [title]", L"the edited text, or nil", L"lets the user edit lines of text in a dialog"},

    {L"kv_kv-createLayer", L"layer", L"T or nil", L"makes the layer as the standards describe it, or unlocks the one that the drawing has"},

    {L"kv_kv-leader-insert", L"points layer block offset", L"entity name, or nil", L"draws a leader through three points with a block at its end; the offset is multiplied by DIMSCALE"},
    {L"kv_kv-leader-setPoints", L"entity points", L"T or nil", L"gives a leader three new points"},
    {L"kv_kv-leader-setBlock", L"entity block", L"T or nil", L"gives a leader another block; T also where the block isn't found"},
    {L"kv_kv-leader-setOffset", L"entity offset", L"T or nil", L"gives a leader another offset, multiplied by DIMSCALE"},
    {L"kv_kv-leader-explode", L"entity", L"((\"obj\" . entity) …), or nil", L"draws a leader's two legs and its block beside it; the leader stays"},

    {L"kv_kv-setGroupSelectable", L"group selectable", L"T or nil", L"says whether picking one member selects the whole group"},
    {L"kv_kv-GetGroup", L"group [create [selectable]]", L"the group's entity name, or nil", L"finds a group by name, or makes it when create is true"},
    {L"AcDbCurve::getLength", L"entity", L"a real", L"measures a curve"},
    {L"AcDbCurve::getPointAtDist", L"entity distance", L"a point, or nil", L"finds the point at a distance along a curve"},
    {L"AcDbCurve::getClosestPointTo", L"entity point", L"a point, or nil", L"finds the point of a curve that is closest in plan view"},
    {L"AcDbCurve::getDistAtPoint", L"entity point", L"a real, or nil", L"measures along a curve up to a point on it"},
    {L"AcDbMText::actualWidth", L"entity", L"a real", L"measures the width of a text as it is set"},
    {L"AcDbMText::actualHeight", L"entity", L"a real", L"measures the height of a text as it is set"},
    {L"AcDbMText::setNormal", L"entity vector", L"T or nil", L"turns a text into the plane with this normal"},
    {L"AcDbMText::setDirection", L"entity angle", L"T or nil", L"turns the lines of a text to an angle in radians"},
    {L"AcDbMText::setMask", L"entity fill scale", L"T or nil", L"switches the mask behind a text, and sets its size"},
    {L"AcDbMText::direction", L"entity", L"radians between -1.57079 and 1.57079, or nil", L"tells the slope of a text's lines"},
    {L"AcDbMText::insert", L"contents point width style attachment", L"entity name", L"draws a text"},
    {L"AcDbMText::ascent", L"entity", L"a real", L"tells by how much the first line rises above the text height"},
    {L"AcDbMText::descent", L"entity", L"a real", L"tells by how much the last line falls below its base line"},
    {L"AcDbLeader::create", L"point …", L"entity name", L"draws an arrow line through the points"},
    {L"kv_kv-setColor", L"entity red green blue", L"nil", L"gives an entity a true colour"},
    {L"kv_kv-setPlotStyle", L"layer style", L"nil", L"gives a layer a plot style"},
    {L"kv_kv-freezeInViewport", L"viewport freeze layers", L"nil", L"freezes or thaws layers in one viewport"},
    {L"AcDbMtext::lastLineWidth", L"entity", L"a real", L"measures the last line of a text"},
    {L"AcDbFace::makeEdgeInvisibleAt", L"entity edge", L"T or nil", L"hides an edge of a face, counted from 0"},
    {L"AcDbEntity::getGeomExtents", L"entity", L"((\"min\" x y z) (\"max\" x y z)), or nil", L"measures the box around an entity"},
    {L"AcDbEntity::setColor", L"entity index", L"nil", L"gives an entity a colour of the palette"},
    {L"AcDb2dPolyline::setCurveType", L"entity type", L"T or nil", L"fits (\"f\"), splines (\"s\") or straightens (\"d\") a polyline"},
    {L"kv_kv-sendToBack", L"entity", L"T or nil", L"draws an entity below all others"},

    {L"kv_kv-entsel", L"prompt [keywords]", L"(entity point), a keyword, T where nothing was hit, or nil", L"lets the user pick an entity"},
    {L"ssgetPK", L"add remove keywords [filter]", L"list of entity names, or nil", L"lets the user select, with prompts for adding and removing; nil leaves one out"},
    {L"ssgetCP", L"point …", L"list of entity names, or nil", L"selects what lies in or crosses a polygon"},
    {L"ssgetC", L"corner corner [filter]", L"list of entity names, or nil", L"selects what lies in or crosses a rectangle"},
    {L"ssgetX-block", L"[name]", L"list of entity names, or nil", L"lists the block references of model space, all or those of one block"},
    {L"ssgetX-circle", L"", L"list of entity names, or nil", L"lists the circles of model space"},
    {L"ssgetX-polyline", L"", L"list of entity names, or nil", L"lists the polylines of model space"},
    {L"ssgetX-all", L"", L"list of entity names, or nil", L"lists all entities of model space"},

    {L"kv_kv-getPoint", L"[prompt]", L"a point, or nil", L"asks for a point"},
    {L"kv_kv-getPoint-withKWords", L"[prompt [keywords]]", L"a point, a keyword, or nil", L"asks for a point or one of the keywords, and takes no empty answer"},
    {L"kv_kv-getCorner", L"base [prompt]", L"a point, or nil", L"asks for the corner opposite to a point"},
    {L"kv_kv-intersectArcArc", L"extension arc arc", L"((\"d\" . distance) …), or nil", L"crosses two arc paths; an arc is start, angle, direction, radius, sweep; distances run along the first"},
    {L"kv_kv-intersectArcLine", L"extension arc start end", L"((\"d\" . distance) …), or nil", L"crosses an arc path with a line; distances run along the arc"},
    {L"kv_kv-intersectLineArc", L"extension start end arc", L"((\"d\" . distance) …), or nil", L"crosses a line with an arc path; distances run along the line from its start"},

    {L"asin", L"number", L"radians", L"gives the angle with this sine"},
    {L"acos", L"number", L"radians", L"gives the angle with this cosine"},
    {L"kv_kv-rand", L"[limit]", L"an integer", L"gives a random number, below the limit when there is one"},
    {L"kv_atof", L"text", L"a real, or nil", L"reads the number at the start of a text; 0.0 where there is none"},
    {L"kv::pow", L"base exponent", L"a real", L"raises a number to a power"},

    {L"kv_kv-showHelp", L"file", L"T", L"opens a help file at its contents"},
    {L"kv_kv-SHGetFolderPath", L"name", L"the path, or nil", L"finds a folder of the system by a name such as \"DESKTOP\" or \"APPDATA\""},
    {L"kv_kv-SHOpenFolderAndSelect", L"folder [files]", L"nil", L"shows a folder, with the files selected"},
    {L"kv_kv-shellExecute", L"verb file show", L"T or nil", L"opens, prints or explores a file with the program of its kind; show is \"SHOW\", \"HIDE\" and the like"},
    {L"GetSystemMetrics::SM_CXSCREEN", L"", L"pixels", L"tells the width of the screen"},
    {L"GetSystemMetrics::SM_CYSCREEN", L"", L"pixels", L"tells the height of the screen"},
    {L"GetComputerName", L"", L"the name, or nil", L"tells the computer's name"},
    {L"XFolderDialog", L"title folder", L"the path, or nil", L"lets the user choose a folder"},
    {L"PathIsNetworkPath", L"path", L"T or nil", L"tells whether a path leads to another computer"},
    {L"CFileDialog", L"open title path extensions [overwrite [exist]]", L"the path, or nil", L"lets the user choose a file to open, or to save when open is nil; extensions are like \"kv;mdb\""},
    {L"acedSetStatusBarProgressMeterPos", L"position", L"an integer", L"moves the progress meter"},
    {L"acedSetStatusBarProgressMeter", L"label minimum maximum", L"an integer", L"shows a progress meter in the status bar"},
    {L"acedRestoreStatusBar", L"", L"nil", L"takes the progress meter off"},
    {L"RegEnumKey", L"path", L"list of names, or nil", L"lists the subkeys of a key of the settings"},
    {L"kv_kv-enableAutoCADWindow", L"", L"nil", L"lets the main window take input again"},
    {L"kv_kv-disableAutoCADWindow", L"", L"nil", L"keeps input from the main window"},
    {L"kv_kv-getAcadWindowText", L"", L"the title", L"reads the title of the main window"},
    {L"kv_kv-setAcadWindowText", L"title", L"nil", L"sets the title of the main window"},

    {L"kv_kv-executeToDo", L"document command", L"1 sent, 0 not open, -1 busy", L"runs a command in another open drawing"},
    {L"kv_kv-setToDoDrawing", L"drawing", L"nil", L"notes the drawing that has work waiting"},
    {L"kv_kv-getToDoDrawing", L"", L"the name, or \"\"", L"tells the drawing that has work waiting"},

    {L"AcDbBlockReference::Jig", L"rotate scale scale [point] block …", L"((\"obj\" . entity) …), or nil", L"lets the user place a group of blocks at one point, and turn it; the scales are those of X and Z, and of Y"},
    {L"kv_kv-multiRotateJig", L"prompt base entities", L"radians, or nil", L"lets the user turn a copy of the entities; the drawing stays as it is"},
    {L"kv_kv-multiMoveJig", L"prompt base entities", L"a point, or nil", L"lets the user move a copy of the entities; the drawing stays as it is"},
    {L"kv_kv-createJigTimer", L"milliseconds", L"the timer's number", L"lets the main window take input again after a time"},
    {L"kv_kv-killJigTimer", L"number", L"nil", L"stops such a timer"},

    {L"RectangleJig", L"height width [corner [rotate]]", L"(centre vertex vertex radians corner), or nil", L"lets the user place a rectangle by a corner (1 to 4) or its middle (0), and turn it"},
    {L"kv_kv-lineJig", L"[layer [start]]", L"list of points, or nil", L"lets the user draw the points of a polyline; nothing is added to the drawing"},
    {L"kv_kv-rotateJig", L"entity prompt", L"radians, T after Enter, or nil", L"lets the user turn a text or block; the drawing stays as it is"},

    {L"kv_kv-textJig", L"contents style height layer", L"a point, or nil", L"lets the user place a text; nothing is added to the drawing"},

    {L"kv_kv-drawTripleCenter", L"convert detail run [next]", L"entity name, or nil", L"draws a straight duct between the trimmed ends of a run"},
    {L"kv_kv-getTripleCoord", L"run [next]", L"list of three vectors", L"tells the axes of a run: along it, across its width, across its height"},
    {L"kv_kv-drawTripleTransition", L"convert detail head tail", L"pairs \"en1\" \"dHeadLength\" \"dTailLength\", or nil", L"draws the piece between two runs in one line"},
    {L"kv_kv-drawTripleElbow", L"convert detail square radius head tail", L"pairs \"en1\" \"en2\" \"dHeadLength\" \"dTailLength\", or nil", L"draws the bend between two runs; square may be \"CABLETRAY\""},
    {L"kv_kv-drawTripleWye", L"convert detail flag radius head tail tail", L"pairs \"en1\" to \"en3\" \"dHeadLength\" \"dTailLength1\" \"dTailLength2\", or nil", L"draws the fork of a run into two"},
    {L"kv_kv-drawTripleTakeoff", L"convert detail flag radius head tail tap [tap]", L"pairs \"en1\" \"en2\" \"dHeadLength\" \"dTailLength1\" to \"dTailLength3\", or nil", L"draws one or two taps that leave a run"},
    {L"kv_kv-drawTripleSkin", L"parameter points", L"((\"en\" . entity)), or nil", L"draws a skin over points"},
    {L"kv_kv-tripleUnion", L"entity entity", L"nil", L"unites the second solid with the first"},
    {L"kv_kv-explodeSolid", L"entity", L"((\"FACE\" . entity) …), or nil", L"draws the faces of a solid"},

    {L"kv_kv-drawHanger", L"band point angle width height rectangular rod thickness top detail", L"((\"hanger\" . entity)), or nil", L"draws a hanger of a duct, a band with one rod or a trapeze with two"},

    {L"kv_kv-customizeLayers", L"[path]", L"nil", L"lets the user edit layers, layer keys and layer systems of the standards"},

    {L"kv_kv-LayerSystemOptionsElec", L"[word] [path] ixLayerSystem", L"nil", L"lets the user edit the options of an electrical layer system"},
    {L"kv_kv-LayerSystemOptionsPlumb", L"[path] ixLayerSystem", L"nil", L"lets the user edit the name of a plumbing layer system"},
    {L"kv_kv-LayerSystemOptionsHVAC", L"[path] ixLayerSystem", L"nil", L"lets the user edit the options of an air layer system"},

    {L"kv_kv-customizeTextStyles", L"[path [key]]", L"nil", L"lets the user edit the text styles of the standards"},

    {L"kv_kv-customizeLabelGroup", L"group widths [path [title [hidden]]]", L"nil", L"lets the user name, order and hide the rows of a label or schedule"},

    {L"EditUserOptions", L"discipline [edition]", L"nil", L"lets the user edit the settings that are kept for a person"},

    {L"kv_kv-submitBug", L"mode suffix folder trailer [files]", L"nil", L"lets the user send a report to the support, or save it on the desktop"},

    {L"CreateCompressedGuidString", L"", L"a text of 22 characters, or nil", L"makes a new identifier"},
    {L"signString", L"message [key]", L"pairs \"sPublicKey\" \"sPrivateKey\" \"sSign\", or nil", L"signs a text, with a new key when none is given"},
    {L"verifyString", L"message public signature", L"T or nil", L"tells whether a signature fits a text"},

    {L"DownloadFile", L"url file", L"nil", L"fetches a file; look whether it is there"},
    {L"ExtractZip", L"archive folder", L"T or nil", L"unpacks an archive into a folder"},
    {L"CreateZip", L"archive files", L"T or nil", L"packs files into an archive"},
    {L"GetTempPath", L"", L"the folder, or nil", L"tells the folder for temporary files"},
    {L"IsFileReadOnly", L"path", L"T or nil", L"tells whether a file can't be written; T also for a missing one"},

    {L"kv_kv-safeContinue", L"title message word", L"T or nil", L"asks the user to confirm a dangerous step by typing the word"},
};
// clang-format on
