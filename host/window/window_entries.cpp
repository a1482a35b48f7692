#include <QApplication>

#include "brx/db_tables.h"
#include "host/dialogs/colour_dialog.h"
#include "host/documents/documents.h"
#include "host/editor/drawing_state.h"
#include "host/editor/selection.h"
#include "host/window/host_window.h"
#include "host/window/variables.h"

/// What the menus, the switches of the status bar and the list of layers do.

namespace host {
namespace {

/// A name that is to be no pattern.
std::wstring literally(const std::wstring& name) {
  std::wstring made;
  for (const wchar_t each : name) {
    if (std::wstring_view(L"#@.*?~[]-,`").find(each) != std::wstring_view::npos) made += L'`';
    made += each;
  }
  return made;
}

/// Words of the command that makes a colour a layer's.
std::vector<std::wstring> colourWords(const AcCmColor& colour) {
  if (!colour.isByColor()) return {std::to_wstring(colour.colorIndex())};
  return {L"T", std::to_wstring(colour.red()) + L"," + std::to_wstring(colour.green()) + L"," +
                    std::to_wstring(colour.blue())};
}

AcCmColor colourOf(const std::wstring& layer) {
  AcCmColor colour;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  const AcDbObjectPointer<AcDbLayerTable> table(drawing->tableId(AcDbLayerTable::desc()));
  AcDbObjectId id;
  if (!table.object() || table->getAt(layer.c_str(), id) != Acad::eOk) return colour;
  const AcDbObjectPointer<AcDbLayerTableRecord> record(id);
  return record.object() ? record->color() : colour;
}

}  // namespace

void HostWindow::changeLayer(const std::wstring& layer, LayerPanel::Change change) {
  if (!mayActNow()) return refresh();
  using Change = LayerPanel::Change;
  static constexpr std::pair<Change, const wchar_t*> options[] = {
      {Change::on, L"ON"},     {Change::off, L"OFF"},   {Change::freeze, L"Freeze"},
      {Change::thaw, L"Thaw"}, {Change::lock, L"LOck"}, {Change::unlock, L"Unlock"}};
  for (const auto& [each, option] : options) {
    if (each == change) return addCommand({L"LAYER", option, literally(layer), L""});
  }
  if (change == Change::current) return addCommand({L"LAYER", L"Set", layer, L""});
  addJob([this, layer] {
    const auto colour = chooseColour({colourOf(layer), false, true});
    if (!colour) return;
    std::vector<std::wstring> words{L"LAYER", L"Color"};
    for (std::wstring& each : colourWords(*colour)) words.push_back(std::move(each));
    words.insert(words.end(), {literally(layer), L""});
    addCommand(std::move(words));
  });
}

void HostWindow::buildMenus() {
  const auto withDocument = [](auto deed) {
    return [deed] {
      if (Document* const document = documents().current()) deed(*document);
    };
  };
  const auto entry = [this](const char* menu, const char* text, const QKeySequence& keys, Work::Job job,
                            bool onToolBar = false) {
    window_->addEntry(
        QString::fromLatin1(menu), QString::fromLatin1(text), keys,
        [this, job = std::move(job)] { addJob(job); }, onToolBar);
  };
  const auto command = [this](const char* menu, const char* text, const QKeySequence& keys,
                              std::vector<std::wstring> words, bool onToolBar = false) {
    window_->addEntry(
        QString::fromLatin1(menu), QString::fromLatin1(text), keys,
        [this, words = std::move(words)] { addCommand(words); }, onToolBar);
  };
  entry(
      "File", "&New", QKeySequence::New, [this] { files_.makeNew(); }, true);
  entry(
      "File", "&Open...", QKeySequence::Open, [this] { files_.open(); }, true);
  entry("File", "&Save", QKeySequence::Save, withDocument([this](Document& it) { files_.save(it); }), true);
  entry("File", "Save &As...", QKeySequence::SaveAs,
        withDocument([this](Document& it) { files_.saveAs(it); }));
  entry(
      "File", "&Export...", {}, [this] { files_.exportDrawing(); }, true);
  window_->addSeparator(QStringLiteral("File"), true);
  entry("File", "&Close", QKeySequence::Close, [this] { files_.closeCurrent(); });
  window_->addEntry(QStringLiteral("File"), QStringLiteral("&Quit"), QKeySequence::Quit,
                    [this] { close(mayActNow()); });

  command("Edit", "&Undo", QKeySequence::Undo, {L"U"}, true);
  command("Edit", "&Redo", QKeySequence::Redo, {L"REDO"}, true);
  window_->addSeparator(QStringLiteral("Edit"), true);
  command("Edit", "&Erase", {}, {L"ERASE"});
  command("Edit", "&Move", {}, {L"MOVE"});
  command("Edit", "&Copy", {}, {L"COPY"});
  entry("Edit", "Select &All", QKeySequence::SelectAll, [] {
    if (DrawingState* const state = currentState()) state->chosenBefore = allEntities(false);
  });
  entry("Help", "&Commands and functions", QKeySequence::HelpContents,
        [this] { services_.runLine("(help)"); });
}

void HostWindow::buildViews() {
  const auto view = [this](const char* text, std::function<void(view::Camera&)> change,
                           bool onToolBar = false) {
    return window_->addEntry(
        QStringLiteral("View"), QString::fromLatin1(text), {},
        [this, change = std::move(change)] { window_->viewport().look(change); }, onToolBar);
  };
  const auto from = [&](const char* text, view::StandardView side, bool onToolBar = false) {
    view(
        text, [side](view::Camera& camera) { camera.look(side); }, onToolBar);
  };
  window_->addEntry(
      QStringLiteral("View"), QStringLiteral("&Extents"), {}, [this] { window_->viewport().showExtents(); },
      true);
  view(
      "&Previous", [](view::Camera& camera) { camera.previous(); }, true);
  view("&Next", [](view::Camera& camera) { camera.next(); });
  window_->addSeparator(QStringLiteral("View"), true);
  from("&Top", view::StandardView::top, true);
  from("&Front", view::StandardView::front, true);
  from("&Side", view::StandardView::right, true);
  from("&Isometric", view::StandardView::southWest, true);
  const auto check = [&](const char* text, auto isOn, auto toggle) {
    QAction* const entry = window_->addEntry(QStringLiteral("View"), QString::fromLatin1(text), {}, {}, true);
    entry->setCheckable(true);
    QObject::connect(entry, &QAction::triggered, window_.get(), [=] { toggle(), entry->setChecked(isOn()); });
  };
  Viewport& viewport = window_->viewport();
  check(
      "&Orbit", [&] { return viewport.isOrbiting(); }, [&] { viewport.setOrbiting(!viewport.isOrbiting()); });
  window_->addSeparator(QStringLiteral("View"), true);
  check(
      "S&haded", [&] { return viewport.visual() == view::Visual::shaded; },
      [&] {
        viewport.setVisual(viewport.visual() == view::Visual::shaded ? view::Visual::wires
                                                                     : view::Visual::shaded);
      });
  check(
      "&White ground", [&] { return viewport.ground() == view::Ground::white; },
      [&] {
        viewport.setGround(viewport.ground() == view::Ground::white ? view::Ground::dark
                                                                    : view::Ground::white);
      });
}

void HostWindow::buildSwitches() {
  window_->addSwitch(
      QStringLiteral("ORTHO"), QStringLiteral("Bind the cursor to the axes (F8)"),
      [] { return intVariable(L"ORTHOMODE", 0) != 0; }, [this] { pressKey(Qt::Key_F8); });
  window_->addSwitch(
      QStringLiteral("SNAP"), QStringLiteral("Running object snaps of OSMODE (F3)"),
      [] {
        const int modes = intVariable(L"OSMODE", 0);
        return modes != 0 && (modes & snapsOff) == 0;
      },
      [this] { pressKey(Qt::Key_F3); });
  spaceButton_ = window_->addSwitch(
      QStringLiteral("MODEL"), QStringLiteral("Model space or the sheet"),
      [] { return intVariable(L"TILEMODE", 1) != 0; },
      [this] {
        if (mayActNow()) toggleVariable(L"TILEMODE");
        refresh();
      });
}

}  // namespace host
