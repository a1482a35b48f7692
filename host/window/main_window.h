#pragma once

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QTabBar>
#include <QToolButton>
#include <functional>

#include "host/window/command_panel.h"
#include "host/window/layer_panel.h"
#include "host/window/viewport.h"

namespace host {

/// The main window: the viewport with tabs for the open drawings, layers, command line, menus, status bar.
/// It holds no state of the host's, which it shows when it is refreshed.
class MainWindow : public QMainWindow {
 public:
  struct Listeners {
    std::function<void()> onClose;
    /// A drawing's tab was clicked.
    std::function<void(int place)> onTab;
  };
  MainWindow(Conversation& conversation, Viewport::Listeners viewport, CommandPanel::Listeners commands,
             LayerPanel::Listener layers, Listeners listeners);

  Viewport& viewport() { return *viewport_; }
  CommandPanel& commands() { return *commands_; }
  LayerPanel& layers() { return *layers_; }
  QTabBar& tabs() { return *tabs_; }

  /// An entry of a menu, which tests find by its text without dots and marks; with `onToolBar` a button too.
  QAction* addEntry(const QString& menu, const QString& text, const QKeySequence& keys,
                    std::function<void()> deed, bool onToolBar = false);
  void addSeparator(const QString& menu, bool onToolBar = false);
  /// A button of the status bar that is lit while `isOn`.
  QToolButton* addSwitch(const QString& text, const QString& tip, std::function<bool()> isOn,
                         std::function<void()> toggle);
  /// Tabs, layers, prompt and status of what is now.
  void refresh(const Request* request, bool formGoesOn);
  void showCursor(const AcGePoint3d& point);
  QString cursorText() const { return coordinates_->text(); }

  QSize sizeHint() const override { return {1280, 820}; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Switch {
    QToolButton* button;
    std::function<bool()> isOn;
  };
  QMenu* menuOf(const QString& title);
  void refreshTabs();
  void widenLayers();

  const Listeners listeners_;
  QTabBar* tabs_;
  Viewport* viewport_;
  CommandPanel* commands_;
  LayerPanel* layers_;
  QDockWidget* layerDock_ = nullptr;
  /// That the dock was given for its names, in pixels.
  int layerWidth_ = 0;
  QLabel* coordinates_;
  QToolBar* bar_;
  std::vector<Switch> switches_;
};

}  // namespace host
