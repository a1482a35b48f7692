#pragma once

#include <string>

#include "platform/com/owners.h"

/// Texts of grid cells, from values of the engine and back.

/// A text, or a number without fraction; "" for null.
std::wstring cellText(const VARIANT& value);
/// A number with at most so many decimals; "" for null.
std::wstring numberText(const VARIANT& value, int decimals);
/// "-1" or "0", as check boxes have it.
std::wstring flagText(const VARIANT& value);
