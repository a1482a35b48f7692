#pragma once

#include <QString>
#include <string>
#include <vector>

namespace platform {

/// A text of the model in a widget that can't hold it as it is: carriage returns have no place in a text of
/// lines, and half a surrogate pair none anywhere. What a person edits is carried over to the model's text as
/// a change, so that everything else stays what it was, character by character.
class ShownText {
 public:
  /// With many lines, carriage returns aren't shown, and a line's end that is typed is CR LF in the model.
  enum class Lines { one, many };

  explicit ShownText(Lines lines) : lines_(lines) {}
  void set(std::wstring model);
  const std::wstring& model() const { return model_; }
  const QString& shown() const { return shown_; }
  /// What the widget made of it; widgets replace some characters.
  void setSeen(QString seen) { seen_ = std::move(seen); }
  /// The widget's text became this.
  void edit(const QString& now);

 private:
  std::wstring typed(const QString& text) const;

  Lines lines_;
  std::wstring model_;
  QString shown_, seen_;
  /// Where in the model each unit of the shown text begins, and at last the end.
  std::vector<size_t> places_;
};

}  // namespace platform
