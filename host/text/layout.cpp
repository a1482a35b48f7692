#include "host/text/layout.h"

#include <algorithm>
#include <cmath>

#include "host/text/lines.h"

namespace host::text {

void addRules(std::vector<PlacedRule>& rules, double x, double y, double width, const Format& format) {
  const auto add = [&](bool wanted, double share) {
    const double height = y + share * format.height;
    if (wanted) rules.push_back({x, height, x + width, height, format.colour});
  };
  add(format.underlined, -0.2);
  add(format.overlined, 1.2);
  add(format.struck, 0.45);
}

namespace {

/// Distance between base lines in heights of the letters.
constexpr double lineDistance = 5.0 / 3;

class Placer {
 public:
  Placer(const LayoutSettings& settings) : settings_(settings) {}

  Layout run(std::wstring_view contents) {
    const Document document = readCodes(contents, settings_.base);
    std::vector<Line> lines = breakLines(document, settings_.width, settings_.base.height);
    dropEmptyEnd(lines);
    layout_.lines = lines.size();
    for (const Line& each : lines) layout_.width = std::max(layout_.width, each.end);
    box_ = settings_.width > 0 ? settings_.width : layout_.width;
    for (Line& each : lines) placeLine(each, &each == lines.data());
    if (!lines.empty()) finish();
    return std::move(layout_);
  }

 private:
  /// The break behind the last paragraph opens no line of its own.
  static void dropEmptyEnd(std::vector<Line>& lines) {
    if (lines.size() > 1 && lines.back().fragments.empty()) lines.pop_back();
  }

  void placeLine(Line& line, bool first) {
    const double needed = settings_.exactSpacing ? settings_.base.height : line.above;
    y_ -= first ? line.above : needed * lineDistance * settings_.lineSpacing;
    inkTop_ = 0, inkBottom_ = 0;
    double pen = lineStart(line);
    for (const Fragment& each : line.fragments) {
      if (each.kind == Fragment::stack) {
        placeStack(each, pen, line.capitals);
      } else if (each.kind != Fragment::tab) {
        placeLetters(each, pen, line.capitals);
      }
      if (each.kind == Fragment::tab) addRules(layout_.rules, pen, y_, each.width, *each.format);
      pen += each.width;
      joins_ = each.kind != Fragment::tab && each.kind != Fragment::stack && !spread_;
    }
    joins_ = false;
    if (first) layout_.ascent = inkTop_;
    layout_.descent = inkBottom_;
    if (!line.fragments.empty()) include(lineStart_, y_, pen, y_ + line.capitals);
  }

  /// Also spreads the blanks of a line that fills its width.
  double lineStart(Line& line) {
    const double width = line.end - line.start;
    const double room = box_ - line.paragraph->right * settings_.base.height - line.start;
    Align align = line.paragraph->align;
    if (align == Align::byAttachment) {
      align = settings_.column == Column::centre  ? Align::centre
              : settings_.column == Column::right ? Align::right
                                                  : Align::left;
    }
    spread_ = align == Align::justified && !line.endsParagraph && room > width;
    if (spread_) {
      const auto blanks = std::count_if(line.fragments.begin(), line.fragments.end(),
                                        [](const Fragment& f) { return f.kind == Fragment::blank; });
      for (Fragment& each : line.fragments) {
        if (each.kind == Fragment::blank) each.width += (room - width) / static_cast<double>(blanks);
      }
    }
    const double shift = align == Align::centre  ? (room - width) / 2
                         : align == Align::right ? room - width
                                                 : 0;
    return lineStart_ = line.start + shift;
  }

  void placeLetters(const Fragment& each, double pen, double capitals) {
    const double spare = capitals - each.format->height;
    const double y = y_ + (each.format->inLine == InLine::bottom   ? 0
                           : each.format->inLine == InLine::centre ? spare / 2
                                                                   : spare);
    note(each.ink, pen, y);
    addRules(layout_.rules, pen, y, each.width, *each.format);
    if (joins_ && !layout_.letters.empty() && layout_.letters.back().y == y &&
        layout_.letters.back().format == *each.format) {
      layout_.letters.back().letters += each.letters;
      layout_.letters.back().width += each.width;
    } else {
      layout_.letters.push_back({pen, y, each.width, std::wstring(each.letters), *each.format});
    }
  }

  void placeStack(const Fragment& each, double pen, double capitals) {
    const Format& format = *each.format;
    const Piece::Kind kind = each.piece->kind;
    const double h = format.height, base = y_ + stackBase(format, kind, capitals);
    const double upperWidth = each.ink.advance;
    const Measure lower = measure(each.piece->lower, format);
    const bool centred = kind == Piece::fraction;
    const double upperX = pen + (centred ? (each.width - upperWidth) / 2 : 0);
    const double lowerX = pen + (centred                   ? (each.width - lower.advance) / 2
                                 : kind == Piece::diagonal ? upperWidth + h / 2
                                                           : 0);
    const double upperY = base + stackShape(kind).upper * h;
    layout_.letters.push_back({upperX, upperY, upperWidth, each.piece->text, format});
    layout_.letters.push_back({lowerX, base, lower.advance, each.piece->lower, format});
    note(each.ink, upperX, upperY), note(lower, lowerX, base);
    if (kind == Piece::fraction) {
      const double bar = base + (1 + upperY / h - base / h) / 2 * h;
      layout_.rules.push_back({pen, bar, pen + each.width, bar, format.colour});
    } else if (kind == Piece::diagonal) {
      layout_.rules.push_back(
          {pen + upperWidth, base + h / 2, pen + upperWidth + h / 2, base + h * 3 / 2, format.colour});
    }
  }

  void note(const Measure& ink, double x, double y) {
    if (ink.blank()) return;
    inkTop_ = std::max(inkTop_, y + ink.top - y_);
    inkBottom_ = std::max(inkBottom_, y_ - y - ink.bottom);
    include(x + ink.left, y + ink.bottom, x + ink.right, y + ink.top);
  }
  void include(double left, double bottom, double right, double top) {
    layout_.left = std::min(layout_.left, left), layout_.right = std::max(layout_.right, right);
    layout_.bottom = std::min(layout_.bottom, bottom), layout_.top = std::max(layout_.top, top);
  }

  /// Moves all from the top left corner to the attachment point.
  void finish() {
    layout_.height = -y_;
    const double dx = settings_.column == Column::left     ? 0
                      : settings_.column == Column::centre ? -box_ / 2
                                                           : -box_;
    const double dy = settings_.row == Row::top ? 0 : settings_.row == Row::middle ? -y_ / 2 : -y_;
    for (PlacedLetters& each : layout_.letters) each.x += dx, each.y += dy;
    for (PlacedRule& each : layout_.rules) each.x1 += dx, each.x2 += dx, each.y1 += dy, each.y2 += dy;
    if (layout_.blank()) return;
    layout_.left += dx, layout_.right += dx, layout_.bottom += dy, layout_.top += dy;
  }

  const LayoutSettings& settings_;
  Layout layout_;
  double box_ = 0, y_ = 0, lineStart_ = 0, inkTop_ = 0, inkBottom_ = 0;
  bool joins_ = false, spread_ = false;
};

}  // namespace

Layout layOut(std::wstring_view contents, const LayoutSettings& settings) {
  return Placer(settings).run(contents);
}

}  // namespace host::text
