#include <string>

#include "brx/db_database.h"
#include "brx/db_text.h"
#include "brx/db_transactions.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/support/current_drawing.h"

/// The host measures only whole texts, so the last line is found by writing shorter and shorter contents
/// until a line has gone. All of it runs in a transaction that is taken back.

namespace {

double heightOf(AcDbMText& text, const std::wstring& contents) {
  text.setContents(contents.c_str());
  return contents.empty() ? 0.0 : text.actualHeight();
}

std::wstring lastParagraph(const std::wstring& contents) {
  const size_t mark = contents.rfind(L"\\P");
  return mark == std::wstring::npos ? contents : contents.substr(mark + 2);
}

/// Moves the last word and the blanks behind it from the end of `rest` to the front of `line`.
void moveWord(std::wstring& rest, std::wstring& line) {
  size_t start = rest.size();
  while (start > 0 && rest[start - 1] == L' ') --start;
  while (start > 0 && rest[start - 1] != L' ') --start;
  line.insert(0, rest, start);
  rest.erase(start);
}

/// The part of the paragraph that stands in its last line as the host wraps it.
std::wstring lastLine(AcDbMText& text, const std::wstring& paragraph) {
  const double whole = heightOf(text, paragraph), oneLine = text.textHeight();
  if (2 * oneLine > whole) return paragraph;
  std::wstring rest = paragraph, line;
  while (!rest.empty()) {
    moveWord(rest, line);
    if (whole >= heightOf(text, rest) + oneLine) break;
  }
  return line;
}

double lastLineWidth(AcDbMText& text) {
  const std::wstring contents = text.contents();
  const std::wstring line = lastLine(text, lastParagraph(contents));
  text.setContents(line.c_str());
  const double width = text.actualWidth();
  text.setContents(contents.c_str());
  return width;
}

}  // namespace

int mtextLastLineWidth() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  AcDbTransactionManager* const transactions = currentDatabase()->transactionManager();
  transactions->startTransaction();
  AcDbObject* object = nullptr;
  if (transactions->getObject(object, id, AcDb::kForWrite) == Acad::eOk) {
    if (AcDbMText* const text = AcDbMText::cast(object)) acedRetReal(lastLineWidth(*text));
  }
  transactions->abortTransaction();
  return done;
}
