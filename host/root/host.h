#pragma once

#include <cstddef>
#include <vector>

namespace host {

/// The running host owns what there is once in it: command line, modules, documents, queues, variables. Each
/// is a part, named by its type. A program makes a host before all else, and so does a program of tests; the
/// functions of the host interface, which bear no object, reach its parts over `Host::current`, the one
/// global pointer.
class Host {
 public:
  /// Takes the place of the current host as long as it lives.
  Host();
  /// Ends the parts, the one made last first. One that another asks for at its end is made anew, and ended.
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  static Host& current() { return *current_; }

  /// Made when it is first asked for.
  template <class T>
  T& part() {
    static const size_t place = nextPlace();
    if (place >= parts_.size()) parts_.resize(place + 1);
    if (!parts_[place].object) {
      T* const made = new T;
      parts_[place] = {made, [](void* object) { delete static_cast<T*>(object); }};
      order_.push_back(place);
    }
    return *static_cast<T*>(parts_[place].object);
  }

 private:
  struct Part {
    void* object = nullptr;
    void (*end)(void*) = nullptr;
  };
  static size_t nextPlace();

  static Host* current_;
  Host* const former_;
  std::vector<Part> parts_;
  std::vector<size_t> order_;
};

/// What there is once in the current host.
template <class T>
T& theOne() {
  return Host::current().part<T>();
}

}  // namespace host
