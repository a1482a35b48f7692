#pragma once

#include <QImage>
#include <QString>
#include <string>

namespace host {

/// Empty when the picture is like the one in the file: no more than the share `tolerance` of its pixels is
/// clearly another. Else what is different, and where the picture and a picture of the difference were
/// stored. With ZARBO_KEEP_PICTURES in the environment the picture becomes the file instead.
std::wstring comparePicture(const QImage& picture, const QString& file, double tolerance);

}  // namespace host
