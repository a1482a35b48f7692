#pragma once

#include <memory>
#include <type_traits>
#include <typeindex>

#include "brx/db_database.h"

namespace host {

/// The seam to what rooms above keep for a drawing; it goes before the drawing's objects.
std::shared_ptr<void>& keptFor(AcDbDatabase& drawing, std::type_index type);

/// What is kept for the drawing under the type `T`, one of each. Made when it is first asked for, of the
/// drawing where `T` can be, and gone with it.
template <class T>
T& keptFor(AcDbDatabase& drawing) {
  std::shared_ptr<void>& place = keptFor(drawing, typeid(T));
  if (!place) {
    if constexpr (std::is_constructible_v<T, AcDbDatabase&>) {
      place = std::make_shared<T>(drawing);
    } else {
      place = std::make_shared<T>();
    }
  }
  return *static_cast<T*>(place.get());
}

}  // namespace host
