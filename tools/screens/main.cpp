// Takes a picture of every window of the station: screens DIR OUT [WINDOW ...].
//
// DIR is an application directory, OUT takes a PNG a window. No display is needed with
// QT_QPA_PLATFORM=offscreen. --dark before DIR puts them on a dark desktop.
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

#include "station/station.h"
#include "ui/qt_platform.h"
#include "ui/text.h"

namespace {

constexpr const char* kWindows[] = {
    "LogForm",        "LogSearch",      "OldQsoForm",       "OldQsoLocator",  "Contest",
    "ContestQso",     "ContestNewQso",  "CheckCallContest", "ContestSearch",  "StatSel",
    "SField",         "SSQuare",        "SPrefissi",        "SContinenti",    "SZone",
    "SCountry",       "SProvincie",     "SNote",            "Hrd",            "HrdMode",
    "MappaSquare",    "StampaQsl",      "TNC",              "TNCtelnet",      "WWConv",
    "FT736",          "DX",             "User",             "TabellaPrefissi", "TabellaCountry",
    "TabellaProvincie", "TabellaNote",  "Help"};

QPalette DarkPalette() {
  const QColor window(45, 48, 52), base(30, 32, 35), words(225, 226, 228), dim(125, 128, 132);
  QPalette dark(QColor(62, 66, 71), window);
  dark.setColor(QPalette::WindowText, words);
  dark.setColor(QPalette::Base, base);
  dark.setColor(QPalette::AlternateBase, QColor(38, 40, 44));
  dark.setColor(QPalette::Text, words);
  dark.setColor(QPalette::ButtonText, words);
  dark.setColor(QPalette::Highlight, QColor(48, 110, 170));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
    dark.setColor(QPalette::Disabled, role, dim);
  }
  return dark;
}

void Settle() {
  QEventLoop loop;
  QTimer::singleShot(150, &loop, &QEventLoop::quit);
  loop.exec();
}

// The contest's windows work on one that was chosen before.
void UseLastContest(brenvo::Session& session) {
  brenvo::Table& contests = *session.TbContest;
  contests.MoveLast();
  if (contests.EOF_()) return;
  session.CurrentContest = {brenvo::DateText(contests.Field("DataContest").Date()),
                            contests.Field("Banda").Text(), contests.Field("Nome").Text(),
                            contests.Field("Locator").Text()};
}

void TakePicture(brenvo::Session& session, brenvo::QtPlatform& platform, const QString& name,
                 const QDir& out) {
  session.Windows.RunEvent([&] {
    brenvo::Window* window = session.Windows.LoadNew(brenvo::FromQt(name));
    if (window == nullptr) return;
    session.Windows.Show(*window);
    Settle();
    const QPixmap picture = platform.Screen().FramePictureOf(*window);
    const QString file = out.filePath(name + ".png");
    if (!picture.isNull() && picture.save(file)) std::printf("%s\n", qPrintable(file));
    session.Windows.Unload(*window);
  });
  Settle();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Brenvo"));
  QApplication::setStyle(QStringLiteral("Fusion"));
  QStringList arguments = QApplication::arguments();
  if (arguments.removeAll(QStringLiteral("--dark")) > 0) QApplication::setPalette(DarkPalette());
  if (arguments.size() < 3) {
    std::fprintf(stderr, "screens [--dark] DIR OUT [WINDOW ...]\n");
    return 2;
  }
  const std::filesystem::path directory =
      brenvo::PathFromQt(QDir(arguments[1]).absolutePath());
  const QDir out(arguments[2]);
  out.mkpath(QStringLiteral("."));
  QStringList windows = arguments.mid(3);
  if (windows.isEmpty()) {
    for (const char* name : kWindows) windows.append(QLatin1String(name));
  }

  brenvo::QtPlatform platform(directory);
  brenvo::Session session(platform, directory);
  platform.Attach(&session);
  if (brenvo::StartStation(session) == nullptr) return 1;
  Settle();
  UseLastContest(session);
  session.QueryText = "WHERE Call<>''";
  // A box that a window opens by itself must not hold the tool.
  QTimer boxes;
  QObject::connect(&boxes, &QTimer::timeout, [] {
    if (QWidget* box = QApplication::activeModalWidget()) box->close();
  });
  boxes.start(300);
  for (const QString& name : windows) TakePicture(session, platform, name, out);
  session.Windows.RunEvent([&] { brenvo::StopStation(session); });
  platform.Attach(nullptr);
  return 0;
}
