#include "zarbo/jigs/line_jig.h"

#include "brx/editor_input.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/jigs/jig_functions.h"

void LineJig::presetStart(const AcGePoint3d& start) {
  asksStart_ = false;
  polyline_ = std::make_unique<AcDbPolyline>();
  lastPoint_ = start;
  addVertex(start);
}

bool LineJig::run(const std::wstring& layerName) {
  if (asksStart_) polyline_ = std::make_unique<AcDbPolyline>();
  if (!layerName.empty()) polyline_->setLayer(layerName.c_str(), true, false);
  setDispPrompt(asksStart_ ? L"\nSpecify start point: " : L"\nSpecify next point: ");
  DragStatus status;
  do {
    status = drag();
    lastPoint_ = cursorPoint_;
    addVertex(cursorPoint_);
    setDispPrompt(L"\nSpecify next point: ");
  } while (status == kNormal);
  if (status == kCancel) {
    polyline_.reset();
  } else {
    // The end of the input has added a vertex as well.
    polyline_->removeVertexAt(static_cast<unsigned>(vertexIndex_));
  }
  acedRedraw(nullptr, 0);
  return status != kCancel;
}

void LineJig::addVertex(const AcGePoint3d& point) {
  ++vertexIndex_;
  polyline_->addVertexAt(static_cast<unsigned>(vertexIndex_), point.convert2d(), 0, -1, -1);
}

/// The image shows what was accepted; between, the cursor's rubber band does.
AcEdJig::DragStatus LineJig::sampler() {
  setUserInputControls(kNullResponseAccepted);
  DragStatus status;
  if (vertexIndex_ == -1) {
    status = acquirePoint(cursorPoint_);
  } else {
    setSpecialCursorType(kRubberBand);
    status = acquirePoint(cursorPoint_, lastPoint_);
  }
  return status == kNormal ? kNoChange : status;
}

int kvLineJig() {
  acedRetNil();
  LispArgs args;
  std::wstring layerName;
  if (!getString(args.cursor, layerName) && args.cursor && args.cursor->restype == RTNIL)
    skipItem(args.cursor);
  LineJig jig;
  AcGePoint3d start;
  if (getPoint3d(args.cursor, start)) jig.presetStart(start);
  if (!jig.run(layerName)) return done;
  LispList result;
  beginList(result);
  for (unsigned i = 0; i < jig.polyline().numVerts(); ++i) {
    AcGePoint3d point;
    jig.polyline().getPointAt(i, point);
    appendValue(result, LispAtom::point(point.x, point.y, point.z));
  }
  endListAndReturn(result);
  return done;
}
