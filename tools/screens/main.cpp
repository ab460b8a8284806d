// Takes a picture of every window: screens [--dark] [--points N] STATION OUT [PICTURE ...].
//
// STATION is an application directory; an empty log is filled with made-up contacts first. OUT
// takes a PNG a picture. --dark puts them on a dark desktop, --points on one with letters of that
// size.
#include <cstdio>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QEventLoop>
#include <QMessageBox>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <string>
#include <vector>

#include "demonstration/demonstration.h"
#include "screens/far_ends.h"
#include "screens/pictures.h"
#include "station/station.h"
#include "ui/qt_platform.h"
#include "ui/style.h"
#include "ui/text.h"
#include "upkeep/backup.h"

namespace {

constexpr int kContacts = 4000;
constexpr const char* kModesShown = "SSB;CW;FM;RTTY;PSK31;FT8;";
const std::vector<std::string> kSpots = {
    "Hello Anna, this is a made-up cluster",
    "DX de OE3ABC:    144300.0  9A5XYZ       JN85 59 tropo                 1812Z",
    "DX de DK5ABC:     50110.0  EA8XYZ       sporadic E                    1813Z",
    "DX de F5XYZ:      14205.0  JA1XYZ       up 5                          1814Z",
    "DX de S57ABC:    432200.0  HA5XYZ       JN97                          1816Z",
    "To ALL de OK1ABC: band opening to the north                           1817Z",
    "DX de IK2ABC:     21025.0  ZL1XYZ       good signal                   1818Z"};
const std::vector<std::string> kTalk = {
    "Welcome to the made-up chat", "<9A5XYZ> good evening from JN85",
    "<OE5ABC> 70 cm is open to the north", "<*S57ABC*> Anna, 144.325 in five minutes?"};

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

void Settle(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// The contest's windows work on one that was chosen before.
void UseLastContest(brenvo::core::Session& session) {
  brenvo::engine::Table& contests = *session.Tables.TbContest;
  contests.MoveLast();
  if (contests.EOF_()) return;
  session.Handed.CurrentContest = {brenvo::base::DateText(contests.Field("DataContest").Date()),
                                   contests.Field("Banda").Text(), contests.Field("Nome").Text(),
                                   contests.Field("Locator").Text()};
  session.Handed.CurrentContest.MoltSquare = contests.Field("MoltSquare").Bool();
}

class Photographer {
 public:
  Photographer(brenvo::core::Session& session, brenvo::ui::QtPlatform& platform, QDir out)
      : session_(session), platform_(platform), out_(std::move(out)) {
    QObject::connect(&dialogs_, &QTimer::timeout, [this] { LookAtDialog(); });
    dialogs_.start(200);
  }

  // False when there was nothing to see.
  bool Take(const brenvo::screens::Picture& picture) {
    file_ = out_.filePath(brenvo::ui::ToQt(picture.file) + ".png");
    dialog_ = brenvo::ui::ToQt(picture.dialog);
    taken_ = false;
    brenvo::forms::Window* window = nullptr;
    session_.Handed.QueryText =
        picture.selection.empty() ? "WHERE Banda='  6 m'" : picture.selection;
    session_.Windows.RunEvent([&] { window = picture.open(session_); });
    Settle(400);
    if (window != nullptr && session_.Windows.IsLoaded(window)) {
      Keep(platform_.Screen().FramePictureOf(*window));
    }
    CloseAll();
    return taken_;
  }

 private:
  void Keep(const QPixmap& picture) {
    taken_ = picture.save(file_);
    std::printf("%s\n", qPrintable(file_));
  }

  // A dialog holds the station until it is closed: its picture is taken while it stands. A message
  // is closed and nothing else.
  void LookAtDialog() {
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal == nullptr) return;
    if (const auto* box = qobject_cast<QMessageBox*>(modal)) {
      std::fprintf(stderr, "screens: %s\n", qPrintable(box->text()));
    } else if (modal->objectName() == dialog_ && !taken_) {
      Keep(modal->grab());
    }
    modal->close();
  }

  void CloseAll() {
    session_.Windows.RunEvent([&] {
      while (session_.Windows.Loaded().size() > 1) {
        brenvo::forms::Window& last = *session_.Windows.Loaded().back();
        if (session_.Windows.Unload(last)) continue;
        // A transceiver that is on holds its window.
        if (brenvo::forms::Command* power = last.FindCommand("Accensione")) power->Press();
      }
    });
    Settle(20);
  }

  brenvo::core::Session& session_;
  brenvo::ui::QtPlatform& platform_;
  QDir out_;
  QString file_, dialog_;
  bool taken_ = false;
  QTimer dialogs_;
};

int TakePictures(const QApplication& application, const QString& station, const QDir& out,
                 const QStringList& wanted) {
  const std::filesystem::path directory = brenvo::ui::PathFromQt(QDir(station).absolutePath());
  out.mkpath(QStringLiteral("."));
  brenvo::screens::GreetingServer cluster(kSpots), chat(kTalk);
  brenvo::screens::SilentDevice line;
  brenvo::ui::QtPlatform platform(directory);
  brenvo::core::Session session(platform, directory);
  platform.Attach(&session);
  session.SaveSetting("Porte", "COM1", line.Path());
  session.SaveSetting("HrdMode", "ModiUsati", kModesShown);
  brenvo::frame::MainFrame* const frame = brenvo::station::StartStation(session);
  if (frame == nullptr) return 1;
  frame->Backup->Stop();  // the day's copy would be told, and listed, in some pictures
  const QSize screen = application.primaryScreen()->size();
  session.Windows.Find("Brenvo")->Move({brenvo::base::Twips(0), brenvo::base::Twips(0),
                                        brenvo::base::Twips::FromPixels(screen.width()),
                                        brenvo::base::Twips::FromPixels(screen.height())});
  if (session.Db.OpenSnapshot("select Call from Log")->EOF_()) {
    brenvo::demonstration::FillDemonstration(session, kContacts);
  }
  session.Db.Execute("update [User] set TelnetCluster='" + cluster.Address() + "', TelnetWWConv='" +
                     chat.Address() + "'");
  session.Tables.TbUser->MoveFirst();
  Settle(300);
  UseLastContest(session);
  Photographer photographer(session, platform, out);
  int failed = 0;
  for (const brenvo::screens::Picture& picture : brenvo::screens::AllPictures()) {
    if (!wanted.isEmpty() && !wanted.contains(brenvo::ui::ToQt(picture.file))) continue;
    if (picture.file == "TNC") {
      for (const std::string& spot : kSpots) line.Say(spot + "\r\n");
    }
    if (photographer.Take(picture)) continue;
    std::fprintf(stderr, "screens: no picture %s\n", picture.file.c_str());
    ++failed;
  }
  session.Windows.RunEvent([&] { brenvo::station::StopStation(session); });
  platform.Attach(nullptr);
  return failed == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Brenvo"));
  brenvo::ui::UseStyle();
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  QCommandLineParser words;
  const QCommandLineOption dark(QStringLiteral("dark"));
  const QCommandLineOption points(QStringLiteral("points"), QString(), QStringLiteral("N"));
  words.addOptions({dark, points});
  words.process(application);
  const QStringList arguments = words.positionalArguments();
  if (arguments.size() < 2) {
    std::fprintf(stderr, "screens [--dark] [--points N] STATION OUT [PICTURE ...]\n");
    return 2;
  }
  if (words.isSet(dark)) QApplication::setPalette(DarkPalette());
  if (words.isSet(points)) {
    QFont font = QApplication::font();
    font.setPointSizeF(words.value(points).toDouble());
    QApplication::setFont(font);
  }
  return TakePictures(application, arguments[0], QDir(arguments[1]), arguments.mid(2));
}
