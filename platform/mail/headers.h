#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace platform {

/// Values of a mail's header lines. Control characters become blanks, so that no text can begin a line of its
/// own; what isn't plain ASCII, or long, is encoded and folded.

/// A free text such as a subject (RFC 2047).
std::string headerText(const std::wstring& text);
/// The name of a person, or "" for none, and the address: `"Name" <address>`.
std::string headerMailbox(const std::wstring& name, const std::string& address);
/// The parameter `filename` with what leads to it, "; filename=…" (RFC 2231 where needed).
std::string headerFileName(const std::wstring& name);
/// Of the machine's clock, with its zone.
std::string headerDate(std::time_t time);

/// The address as it goes to the server; nothing for what can't be one.
std::optional<std::string> mailAddress(const std::wstring& text);

}  // namespace platform
