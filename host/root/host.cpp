#include "host/root/host.h"

#include <utility>

namespace host {

Host* Host::current_ = nullptr;

Host::Host() : former_(std::exchange(current_, this)) {}

Host::~Host() {
  while (!order_.empty()) {
    const size_t place = order_.back();
    order_.pop_back();
    // Who asks for the part while it ends still finds it.
    parts_[place].end(parts_[place].object);
    parts_[place] = {};
  }
  current_ = former_;
}

size_t Host::nextPlace() {
  static size_t last = 0;  // places are for types, and so for all hosts
  return last++;
}

}  // namespace host
