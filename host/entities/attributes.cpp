#include "brx/db_attributes.h"

#include "host/database/fields.h"
#include "host/database/memory_filer.h"
#include "host/entities/transformed_copy.h"

ACRX_DEFINE_MEMBERS(AcDbAttributeDefinition)
ACRX_DEFINE_MEMBERS(AcDbAttribute)

template <class Visitor, class Self>
void AcDbAttributeDefinition::fields(Visitor& v, Self& o) {
  v(3, o.prompt_), v(2, o.tag_), v(70, o.flags_), v(73, o.fieldLength_), v(74, o.vertical_);
}
HOST_FILING(AcDbAttributeDefinition, AcDbText, fields)

template <class Visitor, class Self>
void AcDbAttribute::fields(Visitor& v, Self& o) {
  v(2, o.tag_), v(70, o.flags_), v(73, o.fieldLength_), v(74, o.vertical_);
}
HOST_FILING(AcDbAttribute, AcDbText, fields)

namespace {

constexpr Adesk::Int16 invisibleFlag = 1, constantFlag = 2;

Adesk::Int16 with(Adesk::Int16 flags, Adesk::Int16 bit, bool on) {
  return static_cast<Adesk::Int16>(on ? flags | bit : flags & ~bit);
}

bool isTag(const ACHAR* tag) { return tag && *tag && !std::wcspbrk(tag, L" \t\n"); }

}  // namespace

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
  if (!isTag(tag)) return Acad::eInvalidInput;
  return assertWriteEnabled(), tag_ = tag, Acad::eOk;
}
Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
  return assertWriteEnabled(), prompt_ = prompt ? prompt : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(bool on) {
  return assertWriteEnabled(), flags_ = with(flags_, invisibleFlag, on), Acad::eOk;
}
Acad::ErrorStatus AcDbAttributeDefinition::setConstant(bool on) {
  return assertWriteEnabled(), flags_ = with(flags_, constantFlag, on), Acad::eOk;
}
/// A definition shows its tag in the place where the attributes' texts will stand; a constant one its text.
bool AcDbAttributeDefinition::subWorldDraw(AcGiWorldDraw* draw) {
  if (isInvisible()) return true;
  host::MemoryFiler filer(AcDb::kCopyFiler);
  AcDbText::dwgOutFields(&filer);
  filer.rewind();
  AcDbText shown;
  shown.dwgInFields(&filer);
  if (!isConstant()) shown.setTextString(tag_.c_str());
  return shown.worldDraw(draw);
}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
  if (!isTag(tag)) return Acad::eInvalidInput;
  return assertWriteEnabled(), tag_ = tag, Acad::eOk;
}
Acad::ErrorStatus AcDbAttribute::setInvisible(bool on) {
  return assertWriteEnabled(), flags_ = with(flags_, invisibleFlag, on), Acad::eOk;
}
bool AcDbAttribute::subWorldDraw(AcGiWorldDraw* draw) {
  return isInvisible() || AcDbText::subWorldDraw(draw);
}
Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                                       const AcGeMatrix3d& blockTransform) {
  if (!definition) return Acad::eNullObjectPointer;
  assertWriteEnabled();
  host::MemoryFiler filer(AcDb::kCopyFiler);
  definition->AcDbText::dwgOutFields(&filer);
  filer.rewind();
  AcDbText::dwgInFields(&filer);
  tag_ = definition->tag();
  flags_ = with(0, invisibleFlag, definition->isInvisible());
  const Acad::ErrorStatus status = transformBy(blockTransform);
  return status == Acad::eCannotScaleNonUniformly ? host::stretchText(*this, blockTransform) : status;
}
