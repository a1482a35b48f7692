#pragma once

#include <optional>
#include <string>

/// How columns of the layer model meet the user. Numbers out are printed with at most the decimals told,
/// trailing zeros off; numbers in are read as far as they go, 0 when the text isn't a number.

/// Stored digits (hundredths of a millimetre) as "0.5 mm"; null or empty is "Default".
std::wstring lineweightText(const std::optional<std::wstring>& stored);
/// "Default" or an empty text is null; the rest of a hundredth is cut off, not rounded.
std::optional<std::wstring> lineweightFromText(const std::wstring& text);

/// Radians to degrees with 2 decimals and back. The constant of the conversion has eight decimals of pi, so
/// a round trip doesn't return exactly the stored value.
std::wstring hatchAngleText(double radians);
double hatchAngleFromText(const std::wstring& text);

/// 2 decimals.
std::wstring hatchScaleText(double scale);
double hatchScaleFromText(const std::wstring& text);

/// 4 decimals.
std::wstring overhangText(double overhang);
double overhangFromText(const std::wstring& text);
