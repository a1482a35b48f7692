// Writes a drawing of mixed entities: make-mixed-drawing COUNT FILE…
#include <cstdio>
#include <cstdlib>

#include "host/filing/files.h"
#include "platform/text/utf.h"
#include "tests/filing/mixed_drawing.h"

int main(int count, char** words) {
  if (count < 3) return std::fprintf(stderr, "usage: make-mixed-drawing COUNT FILE…\n"), 2;
  AcDbDatabase drawing;
  drawMixed(drawing, std::atoi(words[1]));
  for (int i = 2; i < count; ++i) {
    if (host::writeDrawingFile(drawing, fromUtf8(words[i])) == Acad::eOk) continue;
    return std::fprintf(stderr, "%s: can't be written\n", words[i]), 1;
  }
  return 0;
}
