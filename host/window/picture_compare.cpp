#include "host/window/picture_compare.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstdlib>

namespace host {
namespace {

/// Of 255, in a channel: antialiasing and the like.
constexpr int clearly = 64;

bool differs(QRgb a, QRgb b) {
  return std::abs(qRed(a) - qRed(b)) > clearly || std::abs(qGreen(a) - qGreen(b)) > clearly ||
         std::abs(qBlue(a) - qBlue(b)) > clearly;
}

/// What differs is red on the picture, which is pale.
QImage differenceOf(const QImage& picture, const QImage& expected, size_t& count) {
  QImage made(picture.size(), QImage::Format_RGB32);
  count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb now = picture.pixel(x, y);
      const bool isOther = !expected.valid(x, y) || differs(now, expected.pixel(x, y));
      if (isOther) ++count;
      const int pale = 192 + qGray(now) / 4;
      made.setPixel(x, y, isOther ? qRgb(220, 0, 0) : qRgb(pale, pale, pale));
    }
  }
  return made;
}

}  // namespace

std::wstring comparePicture(const QImage& picture, const QString& file, double tolerance) {
  if (std::getenv("ZARBO_KEEP_PICTURES")) {
    return picture.save(file) ? std::wstring() : L"can't be written: " + file.toStdWString();
  }
  const QImage expected(file);
  const QDir folder(QDir::temp().filePath(QStringLiteral("zarbo-pictures")));
  folder.mkpath(QStringLiteral("."));
  const QString name = folder.filePath(QFileInfo(file).completeBaseName());
  size_t count = 0;
  const QImage difference = differenceOf(picture, expected, count);
  const double share =
      static_cast<double>(count) / std::max<double>(1, double(picture.width()) * picture.height());
  if (!expected.isNull() && expected.size() == picture.size() && share <= tolerance) return {};
  picture.save(name + QStringLiteral(".png"));
  difference.save(name + QStringLiteral("-difference.png"));
  return QStringLiteral("%1 of %2 pixels differ from %3, see %4-difference.png")
      .arg(count)
      .arg(picture.width() * picture.height())
      .arg(file, name)
      .toStdWString();
}

}  // namespace host
