// Lays out any bytes as formatted text. The first byte chooses attachment, breaking and spacing.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "host/text/layout.h"
#include "host/text/single_line.h"
#include "platform/text/utf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::wstring contents = fromUtf8({reinterpret_cast<const char*>(data) + 1, size - 1});
  host::text::LayoutSettings settings;
  settings.base.font = &host::text::fontNamed(L"txt");
  settings.column = static_cast<host::text::Column>(data[0] % 3);
  settings.row = static_cast<host::text::Row>(data[0] / 3 % 3);
  settings.width = data[0] & 0x20 ? 7.5 : 0;
  settings.exactSpacing = (data[0] & 0x40) != 0;
  const host::text::Layout layout = host::text::layOut(contents, settings);
  if (!std::isfinite(layout.width) || !std::isfinite(layout.height) || layout.width < 0) std::abort();
  for (const host::text::PlacedLetters& each : layout.letters) {
    if (!std::isfinite(each.x) || !std::isfinite(each.y) || each.letters.size() > contents.size())
      std::abort();
  }
  for (const host::text::LinePart& each : host::text::partsOf(contents)) measure(each.letters, settings.base);
  return 0;
}
