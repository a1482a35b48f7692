#pragma once

#include <string>

#include "zarbo/standards/layer_records.h"

/// How values of the layer tables look in a dialog, and how they are read back.

/// Hundredths of a millimetre as stored digits: "25" reads "0.25 mm"; null and empty "Default".
std::wstring lineweightText(const TextColumn& stored);
/// "Default" and an empty text set null.
void setLineweight(TextColumn& column, const std::wstring& text);
/// The entries of a lineweight's list, between "|".
extern const wchar_t* const lineweightChoices;

/// Radians as degrees with at most two decimals. Read back, they differ from what was stored in the last
/// places, since the drawings' number for pi is short.
std::wstring angleText(double radians);
double angleOfText(const std::wstring& degrees);
