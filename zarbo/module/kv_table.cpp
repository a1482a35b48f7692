#include <iterator>

#include "zarbo/desktop/host_windows.h"
#include "zarbo/desktop/todo_queue.h"
#include "zarbo/dialogs/customization_functions.h"
#include "zarbo/dialogs/dialog_functions.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/drawing/leader_functions.h"
#include "zarbo/drawing/numeric_functions.h"
#include "zarbo/drawing/path_intersections.h"
#include "zarbo/drawing/point_functions.h"
#include "zarbo/drawing/selection_functions.h"
#include "zarbo/ductsolids/solid_functions.h"
#include "zarbo/jigs/jig_functions.h"
#include "zarbo/module/function_table.h"
#include "zarbo/module/kv_help.h"
#include "zarbo/module/wrappers.h"
#include "zarbo/standards/layer_creation.h"
#include "zarbo/support/service_functions.h"

namespace {

// LISP calls these by name; their codes, 63 to 170, follow from their places.
constexpr TableRow rows[] = {
    {L"ed_editMultilineText", kvEntry<edEditMultilineText>},

    {L"kv_kv-createLayer", kvEntry<kvCreateLayer>},

    {L"kv_kv-leader-insert", kvEntry<kvLeaderInsert>},
    {L"kv_kv-leader-setPoints", kvEntry<kvLeaderSetPoints>},
    {L"kv_kv-leader-setBlock", kvEntry<kvLeaderSetBlock>},
    {L"kv_kv-leader-setOffset", kvEntry<kvLeaderSetOffset>},
    {L"kv_kv-leader-explode", kvEntry<kvLeaderExplode>},

    {L"kv_kv-setGroupSelectable", kvEntry<kvSetGroupSelectable>},
    {L"kv_kv-GetGroup", kvEntry<kvGetGroup>},
    {L"AcDbCurve::getLength", kvEntry<curveGetLength>},
    {L"AcDbCurve::getPointAtDist", kvEntry<curveGetPointAtDist>},
    {L"AcDbCurve::getClosestPointTo", kvEntry<curveGetClosestPointTo>},
    {L"AcDbCurve::getDistAtPoint", kvEntry<curveGetDistAtPoint>},
    {L"AcDbMText::actualWidth", kvEntry<mtextActualWidth>},
    {L"AcDbMText::actualHeight", kvEntry<mtextActualHeight>},
    {L"AcDbMText::setNormal", kvEntry<mtextSetNormal>},
    {L"AcDbMText::setDirection", kvEntry<mtextSetDirection>},
    {L"AcDbMText::setMask", kvEntry<mtextSetMask>},
    {L"AcDbMText::direction", kvEntry<mtextDirection>},
    {L"AcDbMText::insert", kvEntry<mtextInsert>},
    {L"AcDbMText::ascent", kvEntry<mtextAscent>},
    {L"AcDbMText::descent", kvEntry<mtextDescent>},
    {L"AcDbLeader::create", kvEntry<leaderCreate>},
    {L"kv_kv-setColor", kvEntry<kvSetColor>},
    {L"kv_kv-setPlotStyle", kvEntry<kvSetPlotStyle>},
    {L"kv_kv-freezeInViewport", kvEntry<kvFreezeInViewport>},
    {L"AcDbMtext::lastLineWidth", kvEntry<mtextLastLineWidth>},
    {L"AcDbFace::makeEdgeInvisibleAt", kvEntry<faceMakeEdgeInvisibleAt>},
    {L"AcDbEntity::getGeomExtents", kvEntry<entityGetGeomExtents>},
    {L"AcDbEntity::setColor", kvEntry<entitySetColor>},
    {L"AcDb2dPolyline::setCurveType", kvEntry<polyline2dSetCurveType>},
    {L"kv_kv-sendToBack", kvEntry<kvSendToBack>},

    {L"kv_kv-entsel", kvEntry<kvEntsel>},
    {L"ssgetPK", kvEntry<ssgetPk>},
    {L"ssgetCP", kvEntry<ssgetCp>},
    {L"ssgetC", kvEntry<ssgetC>},
    {L"ssgetX-block", kvEntry<ssgetXBlock>},
    {L"ssgetX-circle", kvEntry<ssgetXCircle>},
    {L"ssgetX-polyline", kvEntry<ssgetXPolyline>},
    {L"ssgetX-all", kvEntry<ssgetXAll>},

    {L"kv_kv-getPoint", kvEntry<kvGetPoint>},
    {L"kv_kv-getPoint-withKWords", kvEntry<kvGetPointWithKeywords>},
    {L"kv_kv-getCorner", kvEntry<kvGetCorner>},
    {L"kv_kv-intersectArcArc", kvEntry<kvIntersectArcArc>},
    {L"kv_kv-intersectArcLine", kvEntry<kvIntersectArcLine>},
    {L"kv_kv-intersectLineArc", kvEntry<kvIntersectLineArc>},

    {L"asin", kvEntry<asinOf>},
    {L"acos", kvEntry<acosOf>},
    {L"kv_kv-rand", kvEntry<kvRand>},
    {L"kv_atof", kvEntry<kvAtof>},
    {L"kv::pow", kvEntry<kvPow>},

    {L"kv_kv-showHelp", kvEntry<kvShowHelp>},
    {L"kv_kv-SHGetFolderPath", kvEntry<kvShGetFolderPath>},
    {L"kv_kv-SHOpenFolderAndSelect", kvEntry<kvShOpenFolderAndSelect>},
    {L"kv_kv-shellExecute", kvEntry<kvShellExecute>},
    {L"GetSystemMetrics::SM_CXSCREEN", kvEntry<screenWidth>},
    {L"GetSystemMetrics::SM_CYSCREEN", kvEntry<screenHeight>},
    {L"GetComputerName", kvEntry<getComputerName>},
    {L"XFolderDialog", kvEntry<xFolderDialog>},
    {L"PathIsNetworkPath", kvEntry<pathIsNetworkPath>},
    {L"CFileDialog", kvEntry<cFileDialog>},
    {L"acedSetStatusBarProgressMeterPos", kvEntry<setStatusBarProgressMeterPos>},
    {L"acedSetStatusBarProgressMeter", kvEntry<setStatusBarProgressMeter>},
    {L"acedRestoreStatusBar", kvEntry<restoreStatusBar>},
    {L"RegEnumKey", kvEntry<regEnumKey>},
    {L"kv_kv-enableAutoCADWindow", kvEntry<kvEnableAutoCadWindow>},
    {L"kv_kv-disableAutoCADWindow", kvEntry<kvDisableAutoCadWindow>},
    {L"kv_kv-getAcadWindowText", kvEntry<kvGetAcadWindowText>},
    {L"kv_kv-setAcadWindowText", kvEntry<kvSetAcadWindowText>},

    {L"kv_kv-executeToDo", kvEntry<kvExecuteToDo>},
    {L"kv_kv-setToDoDrawing", kvEntry<kvSetToDoDrawing>},
    {L"kv_kv-getToDoDrawing", kvEntry<kvGetToDoDrawing>},

    {L"AcDbBlockReference::Jig", kvEntry<blockReferenceJig>},
    {L"kv_kv-multiRotateJig", kvEntry<kvMultiRotateJig>},
    {L"kv_kv-multiMoveJig", kvEntry<kvMultiMoveJig>},
    {L"kv_kv-createJigTimer", kvEntry<kvCreateJigTimer>},
    {L"kv_kv-killJigTimer", kvEntry<kvKillJigTimer>},

    {L"RectangleJig", kvEntry<rectangleJigOf>},
    {L"kv_kv-lineJig", kvEntry<kvLineJig>},
    {L"kv_kv-rotateJig", kvEntry<kvRotateJig>},

    {L"kv_kv-textJig", kvEntry<kvTextJig>},

    {L"kv_kv-drawTripleCenter", kvEntry<kvDrawTripleCenter>},
    {L"kv_kv-getTripleCoord", kvEntry<kvGetTripleCoord>},
    {L"kv_kv-drawTripleTransition", kvEntry<kvDrawTripleTransition>},
    {L"kv_kv-drawTripleElbow", kvEntry<kvDrawTripleElbow>},
    {L"kv_kv-drawTripleWye", kvEntry<kvDrawTripleWye>},
    {L"kv_kv-drawTripleTakeoff", kvEntry<kvDrawTripleTakeoff>},
    {L"kv_kv-drawTripleSkin", kvEntry<kvDrawTripleSkin>},
    {L"kv_kv-tripleUnion", kvEntry<kvTripleUnion>},
    {L"kv_kv-explodeSolid", kvEntry<kvExplodeSolid>},

    {L"kv_kv-drawHanger", kvEntry<kvDrawHanger>},

    {L"kv_kv-customizeLayers", kvEntry<kvCustomizeLayers>},

    {L"kv_kv-LayerSystemOptionsElec", kvEntry<kvLayerSystemOptionsElec>},
    {L"kv_kv-LayerSystemOptionsPlumb", kvEntry<kvLayerSystemOptionsPlumb>},
    {L"kv_kv-LayerSystemOptionsHVAC", kvEntry<kvLayerSystemOptionsHvac>},

    {L"kv_kv-customizeTextStyles", kvEntry<kvCustomizeTextStyles>},

    {L"kv_kv-customizeLabelGroup", kvEntry<kvCustomizeLabelGroup>},

    {L"EditUserOptions", kvEntry<editUserOptions>},

    {L"kv_kv-submitBug", kvFileEntry<kvSubmitBug>},

    {L"CreateCompressedGuidString", kvEntry<createCompressedGuidString>},
    {L"signString", kvEntry<signStringOf>},
    {L"verifyString", kvEntry<verifyStringOf>},

    {L"DownloadFile", kvEntry<downloadFileOf>},
    {L"ExtractZip", kvEntry<extractZip>},
    {L"CreateZip", kvFileEntry<createZip>},
    {L"GetTempPath", kvEntry<getTempPath>},
    {L"IsFileReadOnly", kvEntry<isFileReadOnly>},

    {L"kv_kv-safeContinue", kvEntry<kvSafeContinue>},
};
static_assert(std::size(rows) == 108);
static_assert(isDescribed(rows, kvHelp), "each row has its line of help, in the same order");

}  // namespace

std::span<const TableRow> kvFunctions() { return rows; }
