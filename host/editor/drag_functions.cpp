#include <utility>

#include "host/bridge/lisp_points.h"
#include "host/editor/drag.h"
#include "host/editor/editor_functions.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

std::wstring_view nameOf(view::Item::Kind kind) {
  constexpr std::wstring_view names[] = {L"polyline", L"polygon", L"arc", L"text", L"point"};
  return names[kind];
}

Value imageList(const std::vector<ImagePart>& image) {
  lisp::ListBuilder all;
  for (const ImagePart& part : image) {
    lisp::ListBuilder one, points;
    one.add(Value(nameOf(part.kind)));
    one.add(Value(std::wstring_view(part.layer)));
    one.add(Value(static_cast<int32_t>(part.colour)));
    for (const AcGePoint3d& each : part.points) points.add(pointValue(each));
    // A text comes before its place.
    if (part.kind == view::Item::letters) one.add(Value(std::wstring_view(part.text)));
    one.add(points.take());
    all.add(one.take());
  }
  return all.take();
}

Value takeDrags(const Call&) {
  lisp::ListBuilder drags;
  for (const DragRecord& each : std::exchange(dragRecords(), {})) {
    lisp::ListBuilder one;
    one.add(Value(std::wstring_view(each.prompt)));
    for (const int count : {each.samples, each.updates, each.images}) one.add(Value(int32_t{count}));
    one.add(imageList(each.image));
    drags.add(one.take());
  }
  return drags.take();
}

constexpr lisp::Builtin rows[] = {{L"host-drag-log", takeDrags, 0, 0}};

}  // namespace

std::span<const lisp::Builtin> dragFunctions() { return rows; }

}  // namespace host
