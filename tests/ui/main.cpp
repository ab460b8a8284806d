// The screens are tested without one: Qt's offscreen platform, the program's own style.
#include <gmock/gmock.h>

#include <QApplication>
#include <QLocale>

#include "ui/style.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Brenvo"));
  brenvo::ui::UseStyle();
  QApplication::setQuitOnLastWindowClosed(false);
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
