#include "host/dialogs/colour_dialog.h"

#include <string>
#include <vector>

#include "host/commands/colour_names.h"
#include "host/database/palette.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"

namespace host {
namespace {

using platform::Form;

enum Number { hues = 101, standards, greys, colourEdit, byLayer, byBlock, sample, description };
constexpr int firstHue = 10, firstGrey = 250, lastIndex = 255, byLayerIndex = 256;
constexpr int hueCount = 24;

constexpr const wchar_t* standardNames[] = {L"ByBlock", L"red",  L"yellow",  L"green",
                                            L"cyan",    L"blue", L"magenta", L"white"};

std::wstring nameOf(const AcCmColor& colour) {
  if (colour.isByColor())
    return std::to_wstring(colour.red()) + L"," + std::to_wstring(colour.green()) + L"," +
           std::to_wstring(colour.blue());
  const unsigned index = colour.colorIndex();
  return index == byLayerIndex              ? L"ByLayer"
         : index < std::size(standardNames) ? standardNames[index]
                                            : std::to_wstring(index);
}

AcCmColor indexed(int index) {
  AcCmColor made;
  made.setColorIndex(static_cast<Adesk::UInt16>(index));
  return made;
}

/// Logical colours have none of their own.
std::optional<uint32_t> rgbOf(const AcCmColor& colour) {
  if (colour.isByColor()) return colour.rgb();
  const unsigned index = colour.colorIndex();
  if (index < 1 || index > lastIndex) return std::nullopt;
  return colourOfIndex(index);
}

std::wstring describe(const AcCmColor& colour) {
  const auto rgb = rgbOf(colour);
  if (!rgb) return L"As the layer or block";
  const std::wstring parts = std::to_wstring(*rgb >> 16) + L", " + std::to_wstring(*rgb >> 8 & 255) + L", " +
                             std::to_wstring(*rgb & 255);
  return (colour.isByColor() ? L"" : L"Index " + std::to_wstring(colour.colorIndex()) + L"   ") +
         (L"Red, Green, Blue: " + parts);
}

class ColourDialog {
 public:
  explicit ColourDialog(const ColourChoice& choice);
  std::optional<AcCmColor> run();

 private:
  struct Palette {
    int number;
    std::vector<int> indexes;
  };

  void addPalette(int number, std::vector<int> indexes, int perRow);
  void onPalette(const Palette& palette);
  void onText();
  bool isAllowed(const AcCmColor& colour) const;
  void show(const AcCmColor& colour);
  void choose(const AcCmColor& colour);

  ColourChoice choice_;
  AcCmColor colour_;
  Form form_{L"Select Color", L"host:SelectColor"};
  std::vector<Palette> palettes_;
};

/// A column is a hue: the bright shades get lighter downwards, and the pale ones below them darker.
std::vector<int> hueIndexes() {
  std::vector<int> indexes;
  for (const int shade : {8, 6, 4, 2, 0, 1, 3, 5, 7, 9}) {
    for (int hue = 0; hue < hueCount; ++hue) indexes.push_back(firstHue + hue * 10 + shade);
  }
  return indexes;
}

std::vector<int> between(int first, int last) {
  std::vector<int> indexes;
  for (int index = first; index <= last; ++index) indexes.push_back(index);
  return indexes;
}

ColourDialog::ColourDialog(const ColourChoice& choice) : choice_(choice), colour_(choice.start) {
  using platform::column, platform::row, platform::field, platform::space;
  palettes_.reserve(3);
  addPalette(hues, hueIndexes(), hueCount);
  addPalette(standards, between(1, 9), 9);
  addPalette(greys, between(firstGrey, lastIndex), 6);
  form_.addButton(byLayer, L"By&Layer", [this] { choose(indexed(byLayerIndex)); });
  form_.addButton(byBlock, L"By&Block", [this] { choose(indexed(0)); });
  form_.control(byLayer).setEnabled(choice.logical);
  form_.control(byBlock).setEnabled(choice.logical);
  form_.addEdit(colourEdit).onChange = [this] { onText(); };
  form_.addSwatches(sample, {0}, {L""}, 1).setEnabled(false);
  form_.addLabel(description, L"");
  form_.addOkAndCancel();
  form_.setLayout(column({hues, row({standards, space(), byLayer, byBlock}), row({greys, space()}),
                          platform::fields({field(L"&Color:", colourEdit)}),
                          row({sample, description, space()}), platform::okAndCancel()}));
  form_.setFocus(colourEdit);
  choose(colour_);
}

void ColourDialog::addPalette(int number, std::vector<int> indexes, int perRow) {
  std::vector<uint32_t> colours;
  std::vector<std::wstring> names;
  for (const int index : indexes) {
    colours.push_back(colourOfIndex(static_cast<unsigned>(index)));
    names.push_back(nameOf(indexed(index)));
  }
  palettes_.push_back({number, std::move(indexes)});
  form_.addSwatches(number, std::move(colours), std::move(names), perRow).onChange =
      [this, at = palettes_.size() - 1] { onPalette(palettes_[at]); };
}

void ColourDialog::onPalette(const Palette& palette) {
  const int chosen = form_.control(palette.number).selected();
  if (chosen >= 0) choose(indexed(palette.indexes[static_cast<size_t>(chosen)]));
}

bool ColourDialog::isAllowed(const AcCmColor& colour) const {
  if (colour.isByColor()) return choice_.mixed;
  return choice_.logical || (colour.colorIndex() >= 1 && colour.colorIndex() <= lastIndex);
}

void ColourDialog::onText() {
  const auto typed = parseColour(form_.text(colourEdit));
  const bool fits = typed && isAllowed(*typed);
  form_.control(platform::okButton).setEnabled(fits);
  if (fits) show(colour_ = *typed);
}

/// In all but the edit.
void ColourDialog::show(const AcCmColor& colour) {
  for (const Palette& each : palettes_) {
    int place = -1;
    for (size_t i = 0; i < each.indexes.size(); ++i) {
      if (!colour.isByColor() && each.indexes[i] == colour.colorIndex()) place = static_cast<int>(i);
    }
    form_.control(each.number).select(place);
  }
  form_.control(sample).setVisible(rgbOf(colour).has_value());
  form_.control(sample).setColours({rgbOf(colour).value_or(0)}, {nameOf(colour)}, 1);
  form_.control(description).setText(describe(colour));
}

void ColourDialog::choose(const AcCmColor& colour) {
  colour_ = colour;
  form_.control(colourEdit).setText(nameOf(colour));
  form_.control(platform::okButton).setEnabled(isAllowed(colour));
  show(colour);
}

std::optional<AcCmColor> ColourDialog::run() {
  if (platform::desktop().runDialog(form_) != platform::okButton) return std::nullopt;
  return colour_;
}

}  // namespace

std::optional<AcCmColor> chooseColour(const ColourChoice& choice) { return ColourDialog(choice).run(); }

}  // namespace host
