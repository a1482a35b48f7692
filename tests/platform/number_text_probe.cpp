// Reads lines "bits decimals trim" and writes the text of each value; the bits are those of the double.
#include <bit>
#include <cstdint>
#include <cstdio>

#include "platform/text/utf.h"
#include "zarbo/support/number_text.h"

int main() {
  unsigned long long bits;
  int decimals, trim;
  while (std::scanf("%llx %d %d", &bits, &decimals, &trim) == 3) {
    const std::wstring text = realToText(std::bit_cast<double>(uint64_t{bits}), decimals, trim != 0);
    std::puts(toUtf8(text).c_str());
  }
}
