#pragma once

#include <string>

#include "engine/jet_sql/catalog.h"
#include "engine/mdb/jet_bytes.h"
#include "engine/statement.h"

namespace mdb {

/// UTF-8 of a text as a Jet 4 file stores it: UTF-16, or compressed after the mark FF FE. A lone surrogate
/// becomes U+FFFD.
std::string textOfJet4(ByteView bytes);

/// "{12345678-ABCD-...}" of the 16 bytes.
std::string guidText(ByteView bytes);

/// A decimal of 17 bytes, sign first, as ten-thousandths. Fails when they can't hold it.
int64_t decimalAsCurrency(ByteView bytes, int scale);
/// The same as the nearest double; `exact` becomes false when digits are lost.
double decimalAsDouble(ByteView bytes, int scale, bool& exact);

/// A fixed-size value of a type that is neither text, binary nor decimal. Fails when its size is wrong.
Stored fixedValue(jet::Type type, ByteView bytes);

}  // namespace mdb
