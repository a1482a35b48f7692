#include "platform/desktop/qt/themes.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace platform {

namespace {

QPalette darkPalette() {
  const QColor window(0x2b, 0x2d, 0x30), base(0x1e, 0x1f, 0x22), text(0xdf, 0xe1, 0xe5),
      dim(0x7a, 0x7e, 0x85);
  QPalette palette(text, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::Button, QColor(0x3c, 0x3f, 0x43));
  palette.setColor(QPalette::Highlight, QColor(0x2e, 0x61, 0xa8));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dim);
  }
  return palette;
}

}  // namespace

QPalette themePalette(bool dark) { return dark ? darkPalette() : QApplication::style()->standardPalette(); }

}  // namespace platform
