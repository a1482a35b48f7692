#pragma once

#include <string>
#include <string_view>

/// Small routines that the subsystems share.

/// Short forms on purpose: drawings made with them must come out the same again.
inline constexpr double pi8 = 3.14159265;
inline constexpr double rightAngle = 1.570796325;

constexpr double degreesToRadians(double degrees) { return degrees * pi8 / 180.0; }
constexpr double radiansToDegrees(double radians) { return radians * 180.0 / pi8; }

/// Compares the capital forms of both texts.
bool equalNoCase(std::wstring_view a, std::wstring_view b);

/// Which type word a value under a DXF group code gets in LISP; `RTNONE` where there is none.
int resultTypeOfGroupCode(int groupCode);

/// What the application's function "rtosRound" gives for the values; "" when the call fails.
std::wstring rtosRound(double value, int mode, int precision);
/// Calls the application's "clocks-start" or "clocks-end".
void timerMark(const std::wstring& name, bool start);

/// Sets the host's "cmdecho" to 0 and gives its former value; `echoRestore` sets it back and gives the
/// host's status.
int echoOff();
int echoRestore(int former);

/// Height of a font in logical units for a device with that many dots per inch: negative, as fonts
/// are asked for by the height of their letters.
int fontHeightToLogical(int pointSize, int dotsPerInch);
/// Key down and up, into the host's window; how many of the two were sent.
int sendKeyPress(int virtualKey);
