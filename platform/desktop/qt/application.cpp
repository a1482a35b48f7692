#include "platform/desktop/qt/application.h"

#include <QApplication>

namespace platform {

QApplication& qtApplication() {
  if (auto* const present = qobject_cast<QApplication*>(QCoreApplication::instance())) return *present;
  static char name[] = "zarbo-host";
  static char* words[] = {name, nullptr};
  static int count = 1;
  // Never deleted: windows and libraries that end later still refer to it.
  auto* const made = new QApplication(count, words);
  made->setQuitOnLastWindowClosed(false);
  return *made;
}

}  // namespace platform
