#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "host/editor/snaps.h"
#include "host/view/canvas.h"
#include "host/window/conversation.h"
#include "host/window/grips.h"

namespace host {

/// The picture of the current drawing, and what a person does in it. It shows the space that is current when
/// it is refreshed.
class Viewport : public QWidget {
 public:
  /// What happens in the viewport and concerns others.
  struct Listeners {
    /// Enter by the right button.
    std::function<void()> onEnter;
    /// Where the cursor is, in the user coordinate system.
    std::function<void(const AcGePoint3d&)> onCursor;
    /// A grip was clicked.
    std::function<void(const Grip&)> onGrip;
    /// Whether a person may choose entities where no prompt waits.
    std::function<bool()> mayChoose;
  };

  Viewport(Conversation& conversation, Listeners listeners);
  ~Viewport() override;

  /// Shows what has changed in the drawing, its view or the prompt. Painting goes on in the event loop.
  void refresh();
  /// Paints to the end.
  void finish();
  /// Takes the hand off the drawing, which is about to go.
  void letGo(const AcDbDatabase& drawing);

  void setVisual(view::Visual visual);
  view::Visual visual() const { return visual_; }
  void setGround(view::Ground ground);
  view::Ground ground() const { return ground_; }
  /// Changes the camera, if there is a drawing, and shows what comes of it.
  void look(const std::function<void(view::Camera&)>& change);
  void showExtents();
  /// Drags with the left button turn what is seen, until it is switched off.
  void setOrbiting(bool orbiting);
  bool isOrbiting() const { return orbiting_; }

  /// Ends the window of selection that was begun, else the choice; false when there was neither.
  bool escape();
  /// Where a point of the world is, in the widget's pixels; nothing without a drawing.
  std::optional<QPointF> placeOf(const AcGePoint3d& point);
  /// The picture as it is shown, painted to its end.
  QImage picture();
  /// The object snap under the cursor.
  const std::optional<Snap>& snap() const { return snap_; }

  QSize sizeHint() const override { return {900, 600}; }
  QSize minimumSizeHint() const override { return {1, 1}; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  enum class Motion { none, pan, orbit };

  bool open();
  view::Camera& camera() const;
  view::PixelPoint pixelOf(const QPointF& place) const;
  void takeSize();
  void paintSlice();
  void show(const view::PixelBox& changed);
  view::Overlay overlay();
  void addBands(view::Overlay& overlay) const;
  void addGrips(view::Overlay& overlay) const;
  void addBox(view::Overlay& overlay, const AcGePoint3d& corner, const AcGePoint3d& opposite) const;

  /// What the cursor means to the prompt: a snap, or a point of the user's plane, bound where the axes bind.
  void takeCursor(const QPointF& place);
  AcGePoint3d worldAt(const QPointF& place) const;
  void searchUnderCursor();
  std::optional<AcGePoint3d> pivotAt(const QPointF& place) const;
  std::optional<Grip> gripAt(const QPointF& place) const;
  void clickForPrompt();
  void clickForChoice(bool removes);
  void chooseInBox(bool removes);
  void paintPrompt(QPainter& painter);
  QString promptAtCursor() const;

  Conversation& conversation_;
  const Listeners listeners_;
  AcDbDatabase* drawing_ = nullptr;
  AcDbObjectId space_;
  std::unique_ptr<view::Canvas> canvas_;
  view::Visual visual_ = view::Visual::wires;
  view::Ground ground_ = view::Ground::dark;
  QTimer painting_, settling_;

  /// Where the cursor is; nothing while it is elsewhere.
  std::optional<QPointF> place_;
  AcGePoint3d world_;
  std::optional<Snap> snap_;
  std::vector<AcDbObjectId> hovered_;
  /// First corner of a window of selection where no prompt waits, in the world.
  std::optional<AcGePoint3d> corner_;
  QPointF pressed_;
  Motion motion_ = Motion::none;
  /// What a turn is about; the view's centre without it.
  std::optional<AcGePoint3d> pivot_;
  QPointF moved_;
  bool orbiting_ = false;
  QRect promptBox_;
};

}  // namespace host
