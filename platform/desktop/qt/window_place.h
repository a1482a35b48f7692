#pragma once

#include <QRect>
#include <optional>
#include <string>

namespace platform {

/// Where a dialog's window was last, by the dialog's name.
std::optional<QRect> keptPlace(const std::wstring& name);
void keepPlace(const std::wstring& name, const QRect& place);

}  // namespace platform
