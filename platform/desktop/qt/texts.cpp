#include "platform/desktop/qt/texts.h"

#include <QTextDocument>

namespace platform {

QString shownText(const std::wstring& text) { return QString::fromStdWString(text); }

QString shownStart(const std::wstring& text, size_t most) {
  QString start = shownText(text.substr(0, most));
  start.replace(QLatin1Char('\r'), QLatin1String("")).replace(QLatin1Char('\n'), QLatin1Char(' '));
  return text.size() > most ? start + QChar(0x2026) : start;
}

QString withoutMnemonics(const QString& text) {
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == QLatin1Char('&') && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
}

QString plainTip(const std::wstring& text) {
  return text.empty() ? QString()
                      : QStringLiteral("<qt>") + shownText(text).toHtmlEscaped() + QStringLiteral("</qt>");
}

}  // namespace platform
