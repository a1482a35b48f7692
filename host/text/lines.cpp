#include "host/text/lines.h"

#include <algorithm>
#include <cmath>

namespace host::text {

StackShape stackShape(Piece::Kind kind) {
  constexpr double gap = 0.3;
  return kind == Piece::diagonal ? StackShape{1, 2} : StackShape{1 + gap, 2 + gap};
}

double stackBase(const Format& format, Piece::Kind kind, double capitals) {
  const double spare = capitals - stackShape(kind).total * format.height;
  return format.inLine == InLine::bottom ? 0 : format.inLine == InLine::centre ? spare / 2 : spare;
}

namespace {

constexpr double defaultTab = 4;

/// Scripts without blanks between words may be broken behind each letter.
bool breaksBehind(wchar_t letter) {
  return (letter >= 0x2E80 && letter <= 0x9FFF) || (letter >= 0xAC00 && letter <= 0xD7AF) ||
         (letter >= 0xF900 && letter <= 0xFAFF) || (letter >= 0x20000 && letter <= 0x3FFFF);
}

class LineBreaker {
 public:
  LineBreaker(const Document& document, double width, double unit)
      : document_(document), width_(width), unit_(unit) {}

  std::vector<Line> run() {
    if (document_.pieces.empty()) return {};
    begin(document_.pieces.front(), true);
    for (const Piece& piece : document_.pieces) take(piece);
    end(true);
    return std::move(lines_);
  }

 private:
  void take(const Piece& piece) {
    last_ = &piece;
    switch (piece.kind) {
      case Piece::letters:
        return takeLetters(piece);
      case Piece::tab:
        return takeTab(piece);
      case Piece::paragraph:
      case Piece::column:
        end(true);
        return begin(piece, true);
      default:
        return word_.push_back(stack(piece));
    }
  }

  void takeLetters(const Piece& piece) {
    const std::wstring_view text = piece.text;
    for (size_t at = 0; at < text.size();) {
      const size_t start = at;
      const bool blank = text[at] == L' ';
      while (at < text.size() && (text[at] == L' ') == blank) {
        if (breaksBehind(text[at++])) break;
      }
      if (blank) placeWord();
      Fragment made =
          fragment(blank ? Fragment::blank : Fragment::word, piece, text.substr(start, at - start));
      if (blank) {
        place(made);
      } else {
        word_.push_back(made);
        if (breaksBehind(text[at - 1])) placeWord();
      }
    }
  }

  Fragment fragment(Fragment::Kind kind, const Piece& piece, std::wstring_view letters) const {
    Fragment made{kind, letters, &piece, &document_.formats[piece.format], {}, 0};
    made.ink = measure(letters, *made.format);
    made.width = made.ink.advance;
    return made;
  }

  Fragment stack(const Piece& piece) const {
    Fragment made = fragment(Fragment::stack, piece, piece.text);
    const double lower = measure(piece.lower, *made.format).advance;
    made.width = piece.kind == Piece::diagonal ? made.width + lower + made.format->height / 2
                                               : std::max(made.width, lower);
    return made;
  }

  /// Puts the word that is complete now into the line, or into a new one when it doesn't fit.
  void placeWord() {
    if (word_.empty()) return;
    double width = 0;
    for (const Fragment& each : word_) width += each.width;
    const double room = width_ - line().paragraph->right * unit_;
    if (width_ > 0 && hasWord_ && pen_ + width > room + 1e-9 * width_) {
      end(false);
      begin(*word_.front().piece, false);
    }
    for (Fragment& each : word_) place(std::move(each));
    hasWord_ = true;
    line().end = pen_;
    word_.clear();
  }

  void place(Fragment made) {
    pen_ += made.width;
    line().fragments.push_back(std::move(made));
  }

  /// A tab to a stop at which text ends or has its middle grows only when that text is known.
  void takeTab(const Piece& piece) {
    placeWord();
    settleTab();
    const TabStop stop = nextStop();
    Fragment made{Fragment::tab, {}, &piece, &document_.formats[piece.format], {}, stop.position - pen_};
    place(made);
    openTab_ = line().fragments.size();
    openAlign_ = stop.align;
    hasWord_ = true;
    line().end = pen_;
  }
  void settleTab() {
    if (openTab_ == 0) return;
    Fragment& tab = line().fragments[openTab_ - 1];
    double behind = 0;
    for (size_t i = openTab_; i < line().fragments.size(); ++i) behind += line().fragments[i].width;
    const double share = openAlign_ == Align::right ? behind : openAlign_ == Align::centre ? behind / 2 : 0;
    const double back = std::min(share, tab.width);
    tab.width -= back, pen_ -= back, line().end -= back;
    openTab_ = 0;
  }
  TabStop nextStop() const {
    for (const TabStop& each : line().paragraph->tabs) {
      if (each.position * unit_ > pen_ + 1e-6 * unit_) return {each.position * unit_, each.align};
    }
    const double step = defaultTab * unit_;
    return {(std::floor(pen_ / step + 1e-6) + 1) * step, Align::left};
  }

  void begin(const Piece& piece, bool paragraph) {
    Line& made = lines_.emplace_back();
    made.paragraph = &document_.paragraphs[settingsAfter(piece)];
    made.start = made.end = pen_ =
        std::max(0.0, (made.paragraph->left + (paragraph ? made.paragraph->indent : 0)) * unit_);
    hasWord_ = false;
    openTab_ = 0;
  }
  /// A paragraph's settings stand before its first piece; its end bears the ones of the former.
  size_t settingsAfter(const Piece& piece) const {
    const bool ends = piece.kind == Piece::paragraph || piece.kind == Piece::column;
    const Piece* const next = &piece + 1;
    return ends && next < document_.pieces.data() + document_.pieces.size() ? next->settings : piece.settings;
  }

  void end(bool paragraph) {
    if (paragraph) placeWord();
    settleTab();
    Line& done = line();
    done.endsParagraph = paragraph;
    while (!done.fragments.empty() && done.fragments.back().kind == Fragment::blank)
      done.fragments.pop_back();
    for (const Fragment& each : done.fragments) {
      if (each.kind != Fragment::stack) done.capitals = std::max(done.capitals, each.format->height);
    }
    // An empty line is as high as the letters that could stand on it.
    if (done.fragments.empty() && last_) done.capitals = document_.formats[last_->format].height;
    if (done.capitals == 0) {
      for (const Fragment& each : done.fragments)
        done.capitals = std::max(done.capitals, each.format->height);
    }
    done.above = done.capitals;
    for (const Fragment& each : done.fragments) {
      if (each.kind != Fragment::stack) continue;
      const double base = stackBase(*each.format, each.piece->kind, done.capitals);
      done.above = std::max(done.above, base + stackShape(each.piece->kind).total * each.format->height);
    }
  }

  Line& line() { return lines_.back(); }
  const Line& line() const { return lines_.back(); }

  const Document& document_;
  const double width_, unit_;
  std::vector<Line> lines_;
  std::vector<Fragment> word_;
  const Piece* last_ = nullptr;
  double pen_ = 0;
  bool hasWord_ = false;
  size_t openTab_ = 0;  // behind the tab's place in the line; 0 for none
  Align openAlign_ = Align::left;
};

}  // namespace

std::vector<Line> breakLines(const Document& document, double width, double unit) {
  return LineBreaker(document, width, unit).run();
}

}  // namespace host::text
