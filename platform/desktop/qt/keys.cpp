#include "platform/desktop/qt/keys.h"

#include <QtCore/qnamespace.h>
#include <Qt>

namespace platform {

namespace {

/// A run of codes that are keys in the same order.
struct KeyRange {
  int first, last;
  Qt::Key key;
};
constexpr KeyRange ranges[] = {
    {8, 8, Qt::Key_Backspace}, {9, 9, Qt::Key_Tab},      {13, 13, Qt::Key_Return}, {16, 17, Qt::Key_Shift},
    {18, 18, Qt::Key_Alt},     {27, 27, Qt::Key_Escape}, {32, 32, Qt::Key_Space},  {33, 34, Qt::Key_PageUp},
    {35, 35, Qt::Key_End},     {36, 36, Qt::Key_Home},   {37, 40, Qt::Key_Left},   {45, 45, Qt::Key_Insert},
    {46, 46, Qt::Key_Delete},  {48, 57, Qt::Key_0},      {65, 90, Qt::Key_A},      {96, 105, Qt::Key_0},
    {112, 135, Qt::Key_F1},
};

}  // namespace

int keyOfVirtualKey(int virtualKey) {
  for (const KeyRange& range : ranges) {
    if (virtualKey >= range.first && virtualKey <= range.last) return range.key + virtualKey - range.first;
  }
  return Qt::Key_unknown;
}

}  // namespace platform
