#pragma once

#include <string>
#include <string_view>

#include "host/solids/solid_model.h"

namespace host {

/// Text of ISO 10303-21: numbered instances.
class ExchangeText {
 public:
  /// Appends `#n=body;` and answers its number.
  int add(const std::string& body);
  std::string take(std::string_view schema, std::string_view description, const std::string& name) const;

 private:
  std::string instances_;
  int last_ = 0;
};

/// In apostrophes; letters beyond ASCII as \X2\....\X0\.
std::string quoted(std::string_view utf8);
/// With a point, as a real must have.
std::string real(double value);
std::string ref(int instance);
/// "(#1,#2)".
std::string refs(const std::vector<int>& instances);
std::string triple(double x, double y, double z);

}  // namespace host
