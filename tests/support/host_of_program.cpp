#include "host/root/host.h"

namespace {

// Goes with the process: what programs of tests keep in statics may need it to their last.
[[maybe_unused]] host::Host& hostOfProgram = *new host::Host;

}  // namespace
