#include "host/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <cmath>

#include "host/database/spaces.h"
#include "host/documents/documents.h"

namespace host {
namespace {

QDockWidget* dockOf(QWidget* content, const QString& title, QMainWindow* window) {
  auto* const dock = new QDockWidget(title, window);
  dock->setObjectName(title);
  dock->setWidget(content);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
  return dock;
}

/// Four places; what they show as zero has no sign.
QString coordinateText(double value) {
  constexpr double half = 0.00005;
  return QString::number(std::abs(value) < half ? 0.0 : value, 'f', 4);
}

/// The layers' dock as it begins, in pixels.
constexpr int usualLayerWidth = 280;

}  // namespace

MainWindow::MainWindow(Conversation& conversation, Viewport::Listeners viewport,
                       CommandPanel::Listeners commands, LayerPanel::Listener layers, Listeners listeners)
    : listeners_(std::move(listeners)),
      tabs_(new QTabBar(this)),
      viewport_(new Viewport(conversation, std::move(viewport))),
      commands_(new CommandPanel(std::move(commands))),
      layers_(new LayerPanel(std::move(layers))),
      coordinates_(new QLabel(this)),
      bar_(addToolBar(QStringLiteral("Tools"))) {
  tabs_->setExpanding(false);
  tabs_->setDocumentMode(true);
  tabs_->setDrawBase(false);
  tabs_->setFocusPolicy(Qt::NoFocus);
  connect(tabs_, &QTabBar::currentChanged, this, [this](int place) { listeners_.onTab(place); });
  auto* const middle = new QWidget(this);
  auto* const column = new QVBoxLayout(middle);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(tabs_);
  column->addWidget(viewport_, 1);
  middle->setMinimumSize(1, 1);
  setCentralWidget(middle);
  viewport_->setFocusProxy(&commands_->line());
  viewport_->setFocusPolicy(Qt::ClickFocus);

  QDockWidget* const layerDock = layerDock_ = dockOf(layers_, QStringLiteral("Layers"), this);
  QDockWidget* const commandDock = dockOf(commands_, QStringLiteral("Command line"), this);
  commandDock->setFeatures(QDockWidget::DockWidgetMovable);
  addDockWidget(Qt::RightDockWidgetArea, layerDock);
  addDockWidget(Qt::BottomDockWidgetArea, commandDock);
  setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
  resizeDocks({layerDock}, {usualLayerWidth}, Qt::Horizontal);
  layerWidth_ = usualLayerWidth;
  resizeDocks({commandDock}, {150}, Qt::Vertical);

  bar_->setObjectName(QStringLiteral("tools"));
  bar_->setMovable(false);
  bar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  for (const char* const title : {"File", "Edit", "View", "Help"}) menuOf(QString::fromLatin1(title));
  menuOf(QStringLiteral("View"))->addAction(layerDock->toggleViewAction());
  menuOf(QStringLiteral("View"))->addSeparator();

  coordinates_->setMinimumWidth(1);
  coordinates_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  coordinates_->setObjectName(QStringLiteral("coordinates"));
  statusBar()->addWidget(coordinates_, 1);
  statusBar()->setSizeGripEnabled(false);
  setMinimumSize(1, 1);
  commands_->setFocus();
}

// Menus and switches

QMenu* MainWindow::menuOf(const QString& title) {
  for (QAction* const each : menuBar()->actions()) {
    if (each->menu() && each->text() == QLatin1Char('&') + title) return each->menu();
  }
  return menuBar()->addMenu(QLatin1Char('&') + title);
}

QAction* MainWindow::addEntry(const QString& menu, const QString& text, const QKeySequence& keys,
                              std::function<void()> deed, bool onToolBar) {
  QAction* const entry = menuOf(menu)->addAction(text);
  QString name = text;
  entry->setObjectName(name.remove(QLatin1Char('&')).remove(QStringLiteral("...")));
  entry->setShortcut(keys);
  entry->setIconText(entry->objectName());
  if (deed) connect(entry, &QAction::triggered, this, std::move(deed));
  if (onToolBar) bar_->addAction(entry);
  return entry;
}

void MainWindow::addSeparator(const QString& menu, bool onToolBar) {
  menuOf(menu)->addSeparator();
  if (onToolBar) bar_->addSeparator();
}

QToolButton* MainWindow::addSwitch(const QString& text, const QString& tip, std::function<bool()> isOn,
                                   std::function<void()> toggle) {
  auto* const button = new QToolButton(this);
  button->setObjectName(text);
  button->setText(text);
  button->setToolTip(tip);
  button->setCheckable(true);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::clicked, this, std::move(toggle));
  statusBar()->addPermanentWidget(button);
  switches_.push_back({button, std::move(isOn)});
  return button;
}

// What is now

void MainWindow::refreshTabs() {
  const QSignalBlocker quiet(tabs_);
  const auto& open = documents().open();
  while (tabs_->count() > static_cast<int>(open.size())) tabs_->removeTab(tabs_->count() - 1);
  while (tabs_->count() < static_cast<int>(open.size())) tabs_->addTab(QString());
  for (int i = 0; i < tabs_->count(); ++i) {
    const Document& each = *open[static_cast<size_t>(i)];
    const QString path = QString::fromStdWString(each.fileName());
    QString name = QFileInfo(path).fileName();
    if (each.isChanged()) name += QStringLiteral(" *");
    if (tabs_->tabText(i) != name) tabs_->setTabText(i, name);
    tabs_->setTabToolTip(i, path.toHtmlEscaped());
    if (&each == documents().current()) tabs_->setCurrentIndex(i);
  }
}

/// Names longer than those before make the dock wider, up to two fifths of the window; what a person makes of
/// it then stays.
void MainWindow::widenLayers() {
  const int wanted = std::min(layers_->wantedWidth(), width() * 2 / 5);
  if (wanted <= layerWidth_) return;
  layerWidth_ = wanted;
  if (layerDock_->width() < wanted) resizeDocks({layerDock_}, {wanted}, Qt::Horizontal);
}

void MainWindow::refresh(const Request* request, bool formGoesOn) {
  refreshTabs();
  layers_->refresh();
  widenLayers();
  commands_->showPrompt(request, formGoesOn);
  for (const Switch& each : switches_) each.button->setChecked(each.isOn());
  viewport_->refresh();
}

void MainWindow::showCursor(const AcGePoint3d& point) {
  coordinates_->setText(
      QStringList{coordinateText(point.x), coordinateText(point.y), coordinateText(point.z)}.join(
          QStringLiteral(", ")));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // The window goes when all that runs has ended.
  event->ignore();
  const QWidget* const dialog = QApplication::activeModalWidget();
  if (isEnabled() && !(dialog && dialog->isVisible())) listeners_.onClose();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // A disabled window has lost the focus.
  if (event->type() == QEvent::EnabledChange && isEnabled()) commands_->setFocus();
}

}  // namespace host
