// The command line of a host that says nothing.
#include "brx/lisp_calls.h"

int acutPrintValues(const ACHAR*, const AcutPrintValue*, size_t) { return RTNORM; }
