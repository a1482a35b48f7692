#include "zarbo/jigs/text_jig.h"

#include "zarbo/drawing/entity_result.h"
#include "zarbo/drawing/named_records.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/jigs/jig_functions.h"
#include "zarbo/support/plane_geometry.h"
#include "zarbo/support/utilities.h"

TextJig::TextJig(const std::wstring& contents, AcDbObjectId style, double height, AcDbObjectId layer)
    : text_(std::make_unique<AcDbMText>()) {
  text_->setContents(contents.c_str());
  text_->setTextStyle(style);
  text_->setTextHeight(height);
  text_->setLayer(layer, true, false);
  lineOffset_ = text_->ascent() - text_->textHeight();
}

bool TextJig::run() {
  if (prompt_.empty()) prompt_ = L"\nSpecify text insertion point: ";
  setDispPrompt(prompt_.c_str());
  const DragStatus status = drag();
  width_ = text_->actualWidth();
  if (status == kCancel) text_.reset();
  return status != kCancel;
}

AcEdJig::DragStatus TextJig::sampler() {
  const DragStatus status = acquirePoint(cursorPoint_);
  if (status == kCancel || status == kNull) return status;
  if (status == kNormal && cursorPoint_ == lastPoint_) return kNoChange;
  AcGePoint3d location = cursorPoint_;
  // The literal angle isn't quite a right one: X changes by a hair as well.
  polarPoint(location, rightAngle, lineOffset_);
  text_->setAttachment(static_cast<AcDbMText::AttachmentPoint>(attachment_));
  text_->setLocation(location);
  lastPoint_ = cursorPoint_;
  return status;
}

// Arguments that don't suit end it with nil alone.
int kvTextJig() {
  acedRetNil();
  LispArgs args;
  std::wstring contents, styleName, layerName;
  double height;
  if (!getString(args.cursor, contents) || !getString(args.cursor, styleName)) return done;
  const AcDbObjectId style = findTextStyle(styleName);
  if (style.isNull() || !getNumber(args.cursor, height) || !getString(args.cursor, layerName)) return done;
  // A layer that isn't there is no error.
  TextJig jig(contents, style, height, findLayer(layerName));
  if (jig.run()) returnPoint(jig.location());
  return done;
}
