#include "platform/desktop/qt/application.h"
#include "platform/desktop/qt/form_window.h"
#include "platform/desktop/qt/widget_hands.h"
#include "platform/desktop/toolkit.h"

#include <QApplication>

namespace platform {

namespace {

class QtFormStage : public FormStage {
 public:
  QtFormStage() { qtApplication(); }

  int play(Form& form, const FormScript& script, ScriptList& log) override {
    FormWindow window(form, QApplication::activeModalWidget());
    window.start();
    window.activateWindow();
    QApplication::setActiveWindow(&window);
    QCoreApplication::processEvents();
    WidgetHands hands(window);
    const int result = playScript(form, script, hands, log);
    window.rethrow();
    return result;
  }

  // The form goes on afterwards, so nothing may happen to it.
  std::wstring draw(Form& form, const std::wstring& file, int width, int height, bool dark) override {
    FormWindow window(form, nullptr);
    window.showStill();
    return drawWindow(window, file, width, height, dark);
  }
};

}  // namespace

}  // namespace platform

/// What the host finds by name in the library; the caller owns it.
extern "C" platform::FormStage* makeFormStage() { return new platform::QtFormStage; }
