#include "host/text/font.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_BBOX_H
#include FT_OUTLINE_H

#include <array>
#include <map>
#include <memory>
#include <unordered_map>

#include "platform/text/letters.h"

namespace host::text {
namespace {

/// How upright letters lean when they stand in for italic ones: the tangent of 12 degrees.
constexpr double italicSlant = 0.2126;

FT_Library library() {
  static const FT_Library made = [] {
    FT_Library found = nullptr;
    return FT_Init_FreeType(&found) == 0 ? found : nullptr;
  }();
  return made;
}

FT_Face openFace(const char* file) {
  for (const char* folder : {"/usr/share/fonts/truetype/", "/usr/local/share/fonts/", "/usr/share/fonts/"}) {
    FT_Face face = nullptr;
    if (library() && FT_New_Face(library(), (std::string(folder) + file).c_str(), 0, &face) == 0) return face;
  }
  return nullptr;
}

/// Collects an outline in units of the capitals' height.
struct OutlineBuilder {
  Glyph& glyph;
  double scale;
  GlyphPoint last{};

  GlyphPoint point(const FT_Vector& v) const {
    return {static_cast<float>(static_cast<double>(v.x) * scale),
            static_cast<float>(static_cast<double>(v.y) * scale)};
  }
  int add(OutlineStep::Kind kind, GlyphPoint a, GlyphPoint b = {}, GlyphPoint c = {}) {
    glyph.outline.push_back({kind, {a, b, c}});
    last = kind == OutlineStep::curve ? c : a;
    return 0;
  }
};

int moveTo(const FT_Vector* to, void* user) {
  auto& builder = *static_cast<OutlineBuilder*>(user);
  return builder.add(OutlineStep::move, builder.point(*to));
}
int lineTo(const FT_Vector* to, void* user) {
  auto& builder = *static_cast<OutlineBuilder*>(user);
  return builder.add(OutlineStep::line, builder.point(*to));
}
/// A curve of second degree, raised to the third.
int conicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
  auto& builder = *static_cast<OutlineBuilder*>(user);
  const GlyphPoint from = builder.last, middle = builder.point(*control), end = builder.point(*to);
  const auto between = [&middle](const GlyphPoint& p) {
    return GlyphPoint{p.x + (middle.x - p.x) * 2 / 3, p.y + (middle.y - p.y) * 2 / 3};
  };
  return builder.add(OutlineStep::curve, between(from), between(end), end);
}
int cubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user) {
  auto& builder = *static_cast<OutlineBuilder*>(user);
  return builder.add(OutlineStep::curve, builder.point(*first), builder.point(*second), builder.point(*to));
}

void readOutline(FT_Outline& outline, double scale, Glyph& glyph) {
  OutlineBuilder builder{glyph, scale};
  FT_Outline_Funcs steps{};
  steps.move_to = moveTo, steps.line_to = lineTo, steps.conic_to = conicTo, steps.cubic_to = cubicTo;
  if (FT_Outline_Decompose(&outline, &steps, &builder) != 0) glyph.outline.clear();
  if (glyph.outline.empty()) return;
  FT_BBox box;
  FT_Outline_Get_BBox(&outline, &box);
  glyph.left = static_cast<float>(static_cast<double>(box.xMin) * scale);
  glyph.right = static_cast<float>(static_cast<double>(box.xMax) * scale);
  glyph.bottom = static_cast<float>(static_cast<double>(box.yMin) * scale);
  glyph.top = static_cast<float>(static_cast<double>(box.yMax) * scale);
}

/// What stands for a letter that no font has: the outline of a box.
Glyph missingLetter() {
  Glyph box;
  box.advance = 0.8F;
  box.left = 0.1F, box.right = 0.7F, box.top = 1;
  const auto frame = [&box](float inset, bool inner) {
    const float l = box.left + inset, r = box.right - inset, b = inset, t = 1 - inset;
    const GlyphPoint corners[] = {{l, b},
                                  inner ? GlyphPoint{l, t} : GlyphPoint{r, b},
                                  {r, t},
                                  inner ? GlyphPoint{r, b} : GlyphPoint{l, t}};
    for (const GlyphPoint& each : corners)
      box.outline.push_back({&each == corners ? OutlineStep::move : OutlineStep::line, {each, {}, {}}});
  };
  frame(0, false);
  frame(0.08F, true);
  return box;
}

/// The letters of one font file, each read at its first use.
class FontFile {
 public:
  explicit FontFile(const char* file) : face_(openFace(file)) {
    if (!face_) return;
    // Not every file tells the height of its capitals, but each has an H.
    const bool known =
        FT_Load_Char(face_, 'H', FT_LOAD_NO_SCALE) == 0 && face_->glyph->metrics.horiBearingY > 0;
    scale_ = 1.0 / static_cast<double>(known ? face_->glyph->metrics.horiBearingY : face_->units_per_EM);
  }
  /// Null for a letter that the file lacks.
  const Glyph* find(wchar_t letter) {
    const auto code = static_cast<unsigned long>(letter);
    if (code < plain_.size() && plain_[code]) return plain_[code];
    const auto kept = glyphs_.find(letter);
    if (kept != glyphs_.end()) return kept->second.get();
    auto& made = glyphs_[letter] = read(code);
    if (code < plain_.size()) plain_[code] = made.get();
    return made.get();
  }

 private:
  std::unique_ptr<Glyph> read(unsigned long code) const {
    const FT_UInt index = face_ ? FT_Get_Char_Index(face_, code) : 0;
    if (index == 0 || FT_Load_Glyph(face_, index, FT_LOAD_NO_SCALE) != 0) return nullptr;
    auto glyph = std::make_unique<Glyph>();
    glyph->advance = static_cast<float>(static_cast<double>(face_->glyph->metrics.horiAdvance) * scale_);
    glyph->face = face_, glyph->index = index;
    glyph->em = static_cast<float>(face_->units_per_EM * scale_);
    if (face_->glyph->format == FT_GLYPH_FORMAT_OUTLINE) readOutline(face_->glyph->outline, scale_, *glyph);
    return glyph;
  }
  FT_Face face_;
  double scale_ = 1;
  std::array<const Glyph*, 256> plain_{};
  std::unordered_map<wchar_t, std::unique_ptr<Glyph>> glyphs_;
};

/// A kind of lettering and the files that show it.
struct Family {
  const wchar_t* name;
  const char* plain;
  const char* bold;
};
enum FamilyIndex { lettering, sans, serif, mono };
constexpr Family families[] = {
    {L"osifont", "osifont/osifont.ttf", "osifont/osifont.ttf"},
    {L"DejaVu Sans", "dejavu/DejaVuSans.ttf", "dejavu/DejaVuSans-Bold.ttf"},
    {L"DejaVu Serif", "dejavu/DejaVuSerif.ttf", "dejavu/DejaVuSerif-Bold.ttf"},
    {L"DejaVu Sans Mono", "dejavu/DejaVuSansMono.ttf", "dejavu/DejaVuSansMono-Bold.ttf"},
};

/// Parts of names of faces, first match counts.
struct NamePart {
  std::wstring_view part;
  FamilyIndex family;
};
constexpr NamePart nameParts[] = {
    {L"mono", mono},      {L"courier", mono},   {L"consol", mono},   {L"sans", sans},    {L"arial", sans},
    {L"helvetica", sans}, {L"verdana", sans},   {L"tahoma", sans},   {L"calibri", sans}, {L"segoe", sans},
    {L"swis", sans},      {L"trebuchet", sans}, {L"century", sans},  {L"times", serif},  {L"serif", serif},
    {L"georgia", serif},  {L"garamond", serif}, {L"cambria", serif}, {L"dutch", serif},  {L"palatino", serif},
    {L"bookman", serif},
};

FamilyIndex familyOf(std::wstring_view name) {
  const std::wstring lower = lowerCased(std::wstring(name.substr(0, 64)));
  if (lower.ends_with(L".shx")) return lettering;
  for (const NamePart& each : nameParts) {
    if (lower.find(each.part) != std::wstring::npos) return each.family;
  }
  return lower.ends_with(L".ttf") || lower.ends_with(L".otf") || lower.ends_with(L".ttc") ? sans : lettering;
}

FontFile& fileNamed(const char* file) {
  static std::map<std::string_view, std::unique_ptr<FontFile>> files;
  auto& kept = files[file];
  if (!kept) kept = std::make_unique<FontFile>(file);
  return *kept;
}

class InstalledFont final : public Font {
 public:
  InstalledFont(const Family& family, bool bold, bool italic)
      : name_(family.name),
        file_(fileNamed(bold ? family.bold : family.plain)),
        fallback_(fileNamed(families[sans].plain)),
        bold_(bold),
        italic_(italic) {}
  const Glyph& glyph(wchar_t letter) const override {
    // A space that must not end a line looks like any other.
    if (letter == 0xA0) letter = L' ';
    if (const Glyph* const own = file_.find(letter)) return *own;
    if (const Glyph* const other = fallback_.find(letter)) return *other;
    static const Glyph box = missingLetter();
    return box;
  }
  const std::wstring& name() const override { return name_; }
  bool bold() const override { return bold_; }
  bool italic() const override { return italic_; }
  double slant() const override { return italic_ ? italicSlant : 0; }

 private:
  std::wstring name_;
  FontFile &file_, &fallback_;
  bool bold_, italic_;
};

}  // namespace

const Font& fontNamed(std::wstring_view name, bool bold, bool italic) {
  static std::array<std::unique_ptr<Font>, std::size(families) * 4> fonts;
  const size_t family = familyOf(name);
  auto& kept = fonts[family * 4 + (bold ? 2 : 0) + (italic ? 1 : 0)];
  if (!kept) kept = std::make_unique<InstalledFont>(families[family], bold, italic);
  return *kept;
}

}  // namespace host::text
