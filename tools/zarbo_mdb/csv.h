#pragma once

#include <string>

#include "engine/jet_sql/catalog.h"
#include "engine/statement.h"

/// A value as a field of a CSV file (RFC 4180, UTF-8). Null is nothing, an empty text a pair of quotes; dates
/// as `2020-01-31 17:05:09`, binary values in hexadecimal digits, other values as the dialect writes them.
std::string csvField(const Stored& value, jet::Type type);
std::string csvText(const std::string& text);
