#include "engine/errors/error.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>

#include "engine/errors/raised.h"

namespace jet {
namespace {

constexpr std::string_view mark = "\x01jet ";

}  // namespace

std::optional<Error> readRaised(std::string_view text) {
  if (!text.starts_with(mark)) return std::nullopt;
  Error error;
  int64_t place = -1;
  const char* end = text.data() + text.size();
  auto next = std::from_chars(text.data() + mark.size(), end, error.number);
  if (next.ptr == end) return std::nullopt;
  next = std::from_chars(next.ptr + 1, end, place);
  if (place >= 0) error.place = static_cast<size_t>(place);
  if (next.ptr != end) error.text = std::string(next.ptr + 1, end);
  return error;
}

std::string raisedText(const Error& error, int64_t place) {
  return std::string(mark) + std::to_string(error.number) + " " + std::to_string(place) + " " + error.text;
}

void raise(sqlite3_context* context, const Error& error, int64_t place) {
  const std::string text = raisedText(error, place);
  sqlite3_result_error(context, text.c_str(), static_cast<int>(text.size()));
}

Error errorAt(int number, std::string text, std::string_view statement, size_t place) {
  place = std::min(place, statement.size());
  const auto isTrail = [](char c) { return (c & 0xC0) == 0x80; };
  const auto before = statement.substr(0, place);
  const auto position = 1 + static_cast<size_t>(std::count_if(before.begin(), before.end(),
                                                              [&](char c) { return !isTrail(c); }));
  constexpr size_t shown = 40;
  size_t length = std::min(shown, statement.size() - place);
  while (place + length < statement.size() && length > 0 && isTrail(statement[place + length])) --length;
  std::string words(statement.substr(place, length));
  std::replace_if(
      words.begin(), words.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  text += " at position " + std::to_string(position);
  text += words.empty() ? ", the end of the statement." : " near '" + words + "'.";
  return {number, std::move(text), place};
}

}  // namespace jet
