#include "host/script/queues.h"

#include "host/root/host.h"

namespace host {

ScriptQueues& scriptQueues() { return theOne<ScriptQueues>(); }

}  // namespace host
