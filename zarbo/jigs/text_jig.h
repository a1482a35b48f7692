#pragma once

#include <memory>
#include <string>

#include "brx/db_text.h"
#include "brx/ed_jig.h"

/// Places a text so that the capitals of its first line, not its box, begin at the cursor. The text doesn't
/// come into the drawing.
class TextJig : public AcEdJig {
 public:
  TextJig(const std::wstring& contents, AcDbObjectId style, double height, AcDbObjectId layer);

  /// False when the user cancelled.
  bool run();
  AcGePoint3d location() const { return text_->location(); }

 protected:
  AcDbEntity* entity() const override { return text_.get(); }
  bool update() override { return true; }
  DragStatus sampler() override;

 private:
  std::unique_ptr<AcDbMText> text_;
  AcGePoint3d cursorPoint_, lastPoint_;
  double lineOffset_;
  int attachment_ = AcDbMText::kTopLeft;
  std::wstring prompt_, keywords_;
  double width_ = 0;
};
