#pragma once

#include <unistd.h>

namespace platform {

/// Closes a file descriptor.
struct Descriptor {
  int number = -1;
  Descriptor() = default;
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  bool good() const { return number >= 0; }
  void close() {
    if (number >= 0) ::close(number);
    number = -1;
  }
};

}  // namespace platform
