#include "brx/db_text.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/documents/variables.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2, noNegative = 4;

AcDbObjectId currentStyle() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? drawing->textstyle() : AcDbObjectId();
}

/// The height that the style fixes, or 0.
double fixedHeight(AcDbObjectId style) {
  AcDbObjectPointer<AcDbTextStyleTableRecord> record(style);
  return record.object() ? record->textSize() : 0;
}

double lastHeight() {
  const auto value = getVariable(L"TEXTSIZE");
  const double* const height = value ? std::get_if<double>(&*value) : nullptr;
  return height && *height > 0 ? *height : 0.2;
}

AcDbObjectId styleNamed(const std::wstring& name) {
  AcDbObjectId id;
  AcDbObjectPointer<AcDbTextStyleTable> table(acdbHostWorkingDatabase()->tableId(AcDbTextStyleTable::desc()));
  if (table.object()) table->getAt(name.c_str(), id);
  return id;
}

Task<AcDbObjectId> askStyle(CommandInput& input, AcDbObjectId current) {
  const std::wstring name = co_await input.text(L"\nEnter style name: ");
  if (name.empty()) co_return current;
  const AcDbObjectId found = styleNamed(name);
  if (found.isNull()) input.say(L"\nCannot find text style \"" + name + L"\".");
  co_return found.isNull() ? current : found;
}

Task<double> askHeight(CommandInput& input, AcGePoint3d base) {
  const Answer height =
      co_await input.number(Wanted::distance, L"\nSpecify height: ", base, {}, noZero | noNegative);
  if (height.given()) setVariable(L"TEXTSIZE", height.real);
  co_return height.given() ? height.real : lastHeight();
}

struct Justification {
  const wchar_t* name;
  AcDb::TextHorzMode horizontal;
  AcDb::TextVertMode vertical;
};
constexpr Justification justifications[] = {
    {L"Left", AcDb::kTextLeft, AcDb::kTextBase},    {L"Center", AcDb::kTextCenter, AcDb::kTextBase},
    {L"Right", AcDb::kTextRight, AcDb::kTextBase},  {L"Middle", AcDb::kTextMid, AcDb::kTextBase},
    {L"TL", AcDb::kTextLeft, AcDb::kTextTop},       {L"TC", AcDb::kTextCenter, AcDb::kTextTop},
    {L"TR", AcDb::kTextRight, AcDb::kTextTop},      {L"ML", AcDb::kTextLeft, AcDb::kTextVertMid},
    {L"MC", AcDb::kTextCenter, AcDb::kTextVertMid}, {L"MR", AcDb::kTextRight, AcDb::kTextVertMid},
    {L"BL", AcDb::kTextLeft, AcDb::kTextBottom},    {L"BC", AcDb::kTextCenter, AcDb::kTextBottom},
    {L"BR", AcDb::kTextRight, AcDb::kTextBottom},
};
const wchar_t* const justificationNames = L"Left Center Right Middle TL TC TR ML MC MR BL BC BR";

const Justification& justificationNamed(const std::wstring& name) {
  for (const Justification& each : justifications) {
    if (name == each.name) return each;
  }
  return justifications[0];
}

/// Its name may stand where the start point is asked for, too.
Task<Justification> askJustification(CommandInput& input) {
  const Answer answer = co_await input.keyword(
      L"\nEnter an option [Left/Center/Right/Middle/TL/TC/TR/ML/MC/MR/BL/BC/BR]: ", justificationNames);
  co_return justificationNamed(answer.text);
}

Task<> text(CommandInput& input) {
  AcDbObjectId style = currentStyle();
  Justification justification = justifications[0];
  Answer start;
  do {
    start = co_await input.point(L"\nSpecify start point of text or [Justify/Style]: ", {},
                                 std::wstring(L"Justify Style ") + justificationNames, noNull);
    if (start.status != RTKWORD) continue;
    if (start.text == L"Style") {
      style = co_await askStyle(input, style);
    } else if (start.text == L"Justify") {
      justification = co_await askJustification(input);
    } else {
      justification = justificationNamed(start.text);
    }
  } while (!start.given());
  double height = fixedHeight(style);
  if (height <= 0) height = co_await askHeight(input, start.point);
  const Answer turn =
      co_await input.number(Wanted::orientation, L"\nSpecify rotation angle of text <0>: ", start.point);
  const std::wstring content = co_await input.text(L"\nEnter text: ");
  if (content.empty()) co_return;
  auto made =
      std::make_unique<AcDbText>(start.point, content.c_str(), style, height, turn.given() ? turn.real : 0);
  made->setHorizontalMode(justification.horizontal);
  made->setVerticalMode(justification.vertical);
  made->setAlignmentPoint(start.point);
  made->adjustAlignment();
  addEntity(std::move(made));
}

struct MTextLayout {
  AcDbObjectId style = currentStyle();
  double height = 0, rotation = 0, width = 0;
  AcDbMText::AttachmentPoint attachment = AcDbMText::kTopLeft;
};

constexpr const wchar_t* attachmentNames[] = {L"TL", L"TC", L"TR", L"ML", L"MC", L"MR", L"BL", L"BC", L"BR"};

Task<> askLayout(CommandInput& input, std::wstring option, AcGePoint3d base, MTextLayout& layout) {
  if (option == L"Height") {
    layout.height = co_await askHeight(input, base);
  } else if (option == L"Rotation") {
    const Answer turn = co_await input.number(Wanted::orientation, L"\nSpecify rotation angle: ", base);
    if (turn.given()) layout.rotation = turn.real;
  } else if (option == L"Style") {
    layout.style = co_await askStyle(input, layout.style);
  } else {
    const Answer place = co_await input.keyword(L"\nEnter justification [TL/TC/TR/ML/MC/MR/BL/BC/BR] <TL>: ",
                                                L"TL TC TR ML MC MR BL BC BR");
    for (int i = 0; i < 9; ++i) {
      if (place.text == attachmentNames[i])
        layout.attachment = static_cast<AcDbMText::AttachmentPoint>(i + 1);
    }
  }
}

Task<std::wstring> askLines(CommandInput& input) {
  std::wstring contents;
  while (true) {
    const std::wstring line = co_await input.text(L"\nMText: ");
    if (line.empty()) co_return contents;
    if (!contents.empty()) contents += L"\\P";
    contents += line;
  }
}

/// The corner tells on which side of the first the text stands, and how wide it is.
Task<> askCorner(CommandInput& input, AcGePoint3d first, MTextLayout& layout) {
  while (true) {
    const Answer corner =
        co_await input.point(L"\nSpecify opposite corner or [Height/Justify/Rotation/Style/Width]: ", first,
                             L"Height Justify Rotation Style Width", noNull);
    if (corner.given()) {
      layout.width = std::abs(corner.point.x - first.x);
      co_return;
    }
    if (corner.text == L"Width") {
      const Answer width =
          co_await input.number(Wanted::distance, L"\nSpecify width: ", first, {}, noNull | noNegative);
      layout.width = width.real;
      co_return;
    }
    co_await askLayout(input, corner.text, first, layout);
  }
}

Task<> mtext(CommandInput& input) {
  MTextLayout layout;
  const Answer first = co_await input.point(L"\nSpecify first corner: ", {}, {}, noNull);
  co_await askCorner(input, first.point, layout);
  const std::wstring contents = co_await askLines(input);
  if (contents.empty()) co_return;
  auto made = std::make_unique<AcDbMText>();
  made->setContents(contents.c_str());
  made->setLocation(first.point);
  made->setTextStyle(layout.style);
  const double fixed = fixedHeight(layout.style);
  made->setTextHeight(layout.height > 0 ? layout.height : fixed > 0 ? fixed : lastHeight());
  made->setWidth(layout.width);
  made->setRotation(layout.rotation);
  made->setAttachment(layout.attachment);
  addEntity(std::move(made));
}

constexpr Command rows[] = {{L"TEXT", text}, {L"DTEXT", text}, {L"MTEXT", mtext}};

}  // namespace

std::span<const Command> textCommands() { return rows; }

}  // namespace host
