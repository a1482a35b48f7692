#pragma once

#include <QString>
#include <string>

namespace platform {

/// A text for display only; half surrogate pairs stay.
QString shownText(const std::wstring& text);
/// At most `most` characters of it, in one line.
QString shownStart(const std::wstring& text, size_t most);
/// A label's text without the marks of letters that lead to a control.
QString withoutMnemonics(const QString& text);
/// As a tool tip, which would take markup.
QString plainTip(const std::wstring& text);

}  // namespace platform
