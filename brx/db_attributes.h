#pragma once

#include "brx/db_text.h"

/// Texts that a block's users fill in: the definition in the block, the attribute at a reference.

class BRX_API AcDbAttributeDefinition : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition)
  std::wstring tag() const { return tag_; }
  std::wstring prompt() const { return prompt_; }
  /// `eInvalidInput` for an empty tag or one with blanks.
  Acad::ErrorStatus setTag(const ACHAR* tag);
  Acad::ErrorStatus setPrompt(const ACHAR* prompt);
  bool isInvisible() const { return flags_ & 1; }
  bool isConstant() const { return flags_ & 2; }
  Acad::ErrorStatus setInvisible(bool on);
  Acad::ErrorStatus setConstant(bool on);
  BRX_FILES_ITSELF
  bool subWorldDraw(AcGiWorldDraw* draw) override;

 private:
  BRX_DECLARES_FIELDS
  std::wstring tag_, prompt_;
  Adesk::Int16 flags_ = 0, fieldLength_ = 0;
};

class BRX_API AcDbAttribute : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttribute)
  AcDbAttribute() = default;
  AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, AcDbObjectId style = {})
      : AcDbText(position, text, style), tag_(tag) {}
  std::wstring tag() const { return tag_; }
  Acad::ErrorStatus setTag(const ACHAR* tag);
  bool isInvisible() const { return flags_ & 1; }
  Acad::ErrorStatus setInvisible(bool on);
  /// Takes text, style, place and properties from the definition, placed by the block's transform.
  Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                          const AcGeMatrix3d& blockTransform);
  BRX_FILES_ITSELF
  bool subWorldDraw(AcGiWorldDraw* draw) override;

 private:
  BRX_DECLARES_FIELDS
  std::wstring tag_;
  Adesk::Int16 flags_ = 0, fieldLength_ = 0;
};
