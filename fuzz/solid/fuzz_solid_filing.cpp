// Reads any bytes as filed bodies. What is taken must bear everything that is done with bodies.
#include <cstdlib>

#include "solid/boolean.h"
#include "solid/filing.h"
#include "solid/outline.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  solid::UnpackProblems problems;
  std::vector<solid::Body> bodies = solid::unpacked({reinterpret_cast<const char*>(data), size}, problems);
  if (bodies.size() > 4) bodies.resize(4);
  for (solid::Body& each : bodies) {
    if (!solid::isClosed(each)) std::abort();
    solid::outlineOf(each);
    solid::edgesOf(each);
    solid::Body cut = each;
    solid::cutTo(cut, {each.points[0], {0.6, 0.8, 0}});
  }
  solid::UnpackProblems again;
  solid::unpacked(solid::packed(bodies), again);
  if (!again.texts.empty()) std::abort();
  return 0;
}
