#include "host/window/viewport.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "host/access/coordinate_systems.h"
#include "host/database/spaces.h"
#include "host/editor/drawing_state.h"

namespace host {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Painting comes in slices, between which events are served.
constexpr milliseconds slice{12};
/// A rest after the wheel ends a motion.
constexpr int settlingTime = 600;
/// A notch of the wheel.
constexpr double notch = 1.25;
/// The whole width of the viewport turns by that much.
constexpr double orbitTurn = 3.14159265;
/// Empty margin of a drawing that is shown as a whole.
constexpr double margin = 0.04;

}  // namespace

Viewport::Viewport(Conversation& conversation, Listeners listeners)
    : conversation_(conversation), listeners_(std::move(listeners)) {
  setObjectName(QStringLiteral("viewport"));
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::CrossCursor);
  connect(&painting_, &QTimer::timeout, this, [this] {
    // Nothing may be thrown through the toolkit.
    try {
      paintSlice();
    } catch (const std::bad_alloc&) {
      painting_.stop();
      qWarning("zarbo-host: insufficient memory for the picture");
    }
  });
  settling_.setSingleShot(true);
  connect(&settling_, &QTimer::timeout, this, [this] {
    if (drawing_) camera().settle();
  });
}

Viewport::~Viewport() = default;

// The drawing

/// Whether there is something to show; makes the canvas of the space that is current.
bool Viewport::open() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  const AcDbObjectId space = drawing ? currentSpace(*drawing) : AcDbObjectId();
  if (drawing == drawing_ && space == space_ && (canvas_ || !drawing)) return drawing != nullptr;
  drawing_ = drawing, space_ = space;
  corner_.reset(), snap_.reset(), hovered_.clear();
  canvas_.reset();
  if (!drawing) return false;
  canvas_ =
      std::make_unique<view::Canvas>(view::Scene::of(*drawing, space), view::Camera::of(*drawing, space));
  canvas_->setGround(ground_);
  canvas_->setVisual(visual_);
  takeSize();
  return true;
}

void Viewport::letGo(const AcDbDatabase& drawing) {
  if (&drawing != drawing_) return;
  canvas_.reset();
  drawing_ = nullptr, space_ = {};
  corner_.reset(), snap_.reset(), hovered_.clear();
}

view::Camera& Viewport::camera() const { return view::Camera::of(*drawing_, space_); }

void Viewport::takeSize() {
  const double ratio = devicePixelRatioF();
  camera().setSize(static_cast<int>(std::lround(width() * ratio)),
                   static_cast<int>(std::lround(height() * ratio)));
}

view::PixelPoint Viewport::pixelOf(const QPointF& place) const {
  const double ratio = devicePixelRatioF();
  return {place.x() * ratio, place.y() * ratio};
}

// Painting

void Viewport::refresh() {
  if (!open()) return update();
  takeSize();
  canvas_->follow();
  show(canvas_->compose(overlay()));
  if (!painting_.isActive()) painting_.start(0);
}

void Viewport::paintSlice() {
  if (!open()) return painting_.stop();
  const bool whole = canvas_->paint(view::until(steady_clock::now() + slice));
  show(canvas_->compose(overlay()));
  if (whole) painting_.stop();
}

void Viewport::finish() {
  if (!open()) return;
  takeSize();
  canvas_->follow();
  canvas_->paint();
  show(canvas_->compose(overlay()));
  painting_.stop();
}

void Viewport::show(const view::PixelBox& changed) {
  if (!changed.empty()) {
    const double ratio = devicePixelRatioF();
    update(
        QRectF(changed.left / ratio, changed.top / ratio, changed.width() / ratio, changed.height() / ratio)
            .toAlignedRect());
  }
  if (!promptBox_.isNull() || conversation_.request()) update(promptBox_);
}

void Viewport::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (!canvas_) return painter.fillRect(event->rect(), palette().color(QPalette::Mid));
  const double ratio = devicePixelRatioF();
  QImage image(reinterpret_cast<const uchar*>(canvas_->shown()), canvas_->width(), canvas_->height(),
               canvas_->width() * 4, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  const QRectF part = event->rect();
  painter.drawImage(part, image,
                    QRectF(part.x() * ratio, part.y() * ratio, part.width() * ratio, part.height() * ratio));
  paintPrompt(painter);
}

QImage Viewport::picture() {
  finish();
  return grab().toImage();
}

void Viewport::resizeEvent(QResizeEvent*) { refresh(); }

// The view

void Viewport::setVisual(view::Visual visual) {
  visual_ = visual;
  if (canvas_) canvas_->setVisual(visual);
  refresh();
}

void Viewport::setGround(view::Ground ground) {
  ground_ = ground;
  if (canvas_) canvas_->setGround(ground);
  refresh();
}

void Viewport::look(const std::function<void(view::Camera&)>& change) {
  if (!open()) return;
  change(camera());
  refresh();
}

void Viewport::showExtents() {
  look([this](view::Camera& camera) {
    view::Scene& scene = view::Scene::of(*drawing_, space_);
    scene.update();
    const view::PlaneBox box = scene.extents(camera.projection());
    if (!box.empty()) camera.fit(box, margin);
  });
}

void Viewport::setOrbiting(bool orbiting) {
  orbiting_ = orbiting;
  setCursor(orbiting ? Qt::OpenHandCursor : Qt::CrossCursor);
}

std::optional<QPointF> Viewport::placeOf(const AcGePoint3d& point) {
  if (!open()) return std::nullopt;
  takeSize();
  const view::PixelPoint pixel = camera().toPixel(point);
  const double ratio = devicePixelRatioF();
  return QPointF(pixel.x / ratio, pixel.y / ratio);
}

void Viewport::wheelEvent(QWheelEvent* event) {
  event->accept();
  const double notches = event->angleDelta().y() / 120.0;
  if (!open() || notches == 0) return;
  camera().zoom(std::pow(notch, notches), pixelOf(event->position()));
  settling_.start(settlingTime);
  takeCursor(event->position());
  refresh();
}

// Buttons

bool Viewport::event(QEvent* event) {
  // Nothing may be thrown through the toolkit.
  try {
    return QWidget::event(event);
  } catch (const std::bad_alloc&) {
    qWarning("zarbo-host: insufficient memory for the picture");
    return true;
  }
}

void Viewport::mousePressEvent(QMouseEvent* event) {
  if (!open()) return;
  takeCursor(event->position());
  pressed_ = moved_ = event->position();
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  pivot_.reset();
  switch (event->button()) {
    case Qt::MiddleButton:
      motion_ = shift ? Motion::orbit : Motion::pan;
      break;
    case Qt::LeftButton:
      if (orbiting_) {
        motion_ = Motion::orbit;
      } else if (conversation_.request()) {
        clickForPrompt();
      } else if (listeners_.mayChoose()) {
        clickForChoice(shift);
      }
      break;
    case Qt::RightButton:
      if (listeners_.onEnter) listeners_.onEnter();
      break;
    default:
      break;
  }
  if (motion_ == Motion::orbit) pivot_ = pivotAt(event->position());
  refresh();
}

void Viewport::mouseReleaseEvent(QMouseEvent* event) {
  if (!open()) return;
  if (motion_ != Motion::none) {
    motion_ = Motion::none;
    camera().settle();
    return refresh();
  }
  if (event->button() != Qt::LeftButton) return;
  // A window may be drawn with the button held as well.
  const bool isDrawn = (event->position() - pressed_).manhattanLength() > 6;
  if (!isDrawn) return;
  takeCursor(event->position());
  if (conversation_.request() && conversation_.request()->rubberBox) {
    clickForPrompt();
  } else if (corner_) {
    chooseInBox(event->modifiers() & Qt::ShiftModifier);
  }
  refresh();
}

void Viewport::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) return showExtents();
  mousePressEvent(event);
}

void Viewport::mouseMoveEvent(QMouseEvent* event) {
  if (!open()) return;
  const QPointF way = event->position() - moved_;
  moved_ = event->position();
  const double ratio = devicePixelRatioF();
  if (motion_ == Motion::pan) camera().pan(way.x() * ratio, way.y() * ratio);
  if (motion_ == Motion::orbit && width() > 0) {
    const double perPixel = orbitTurn / std::max(width(), 100);
    camera().orbit(way.x() * perPixel, way.y() * perPixel, pivot_ ? &*pivot_ : nullptr);
  }
  takeCursor(event->position());
  if (motion_ == Motion::none) {
    searchUnderCursor();
    if (conversation_.request()) conversation_.moveTo(userSystem().inverse() * world_);
  }
  refresh();
}

void Viewport::leaveEvent(QEvent*) {
  place_.reset(), snap_.reset(), hovered_.clear();
  refresh();
}

bool Viewport::escape() {
  DrawingState* const state = currentState();
  const bool hadCorner = corner_.has_value(), hadChoice = state && !state->chosenBefore.empty();
  if (hadCorner) {
    corner_.reset();
  } else if (hadChoice) {
    state->chosenBefore.clear();
  }
  refresh();
  return hadCorner || hadChoice;
}

}  // namespace host
