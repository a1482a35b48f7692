#include "host/script/queues.h"

namespace host {

ScriptQueues& scriptQueues() {
  // Lives to the end: values in it may belong to interpreters that end in any order.
  static ScriptQueues* const instance = new ScriptQueues;
  return *instance;
}

}  // namespace host
