// Prints into files what the station prints on paper: papers DIR OUT.
#include <cstdio>
#include <QApplication>
#include <QDir>
#include <QLocale>

#include "contest/contest_form.h"
#include "print/report_runner.h"
#include "print/stampa_qsl.h"
#include "station/station.h"
#include "ui/qt_platform.h"
#include "ui/text.h"

namespace {

using brenvo::core::Session;

void PrintContest(Session& session) {
  auto& contest = static_cast<brenvo::contest::ContestForm&>(*session.Windows.LoadNew("Contest"));
  contest.Print();
  session.Windows.Unload(contest);
}

void PrintLabels(Session& session) {
  auto& labels = static_cast<brenvo::print::StampaQsl&>(*session.Windows.LoadNew("StampaQsl"));
  labels.DatiQso.SetOn(true);
  labels.DatiStazione.SetOn(true);
  labels.Print();
  session.Windows.Unload(labels);
}

void PrintLog(Session& session, const char* layout) {
  session.Db.Execute("DELETE FROM SLog");
  session.Db.Execute("INSERT INTO SLog SELECT * FROM Log  ORDER BY DataQso");
  brenvo::print::RunReport(session, session.File(layout));
}

struct Paper {
  const char* file;
  void (*print)(Session&);
};

constexpr Paper kPapers[] = {
    {"contest.pdf", PrintContest},
    {"labels.pdf", PrintLabels},
    {"logv.pdf", [](Session& session) { PrintLog(session, "\\logv.rpt"); }},
    {"logo.pdf", [](Session& session) { PrintLog(session, "\\logo.rpt"); }},
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Brenvo"));
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 3) {
    std::fprintf(stderr, "papers DIR OUT\n");
    return 2;
  }
  const std::filesystem::path directory = brenvo::ui::PathFromQt(QDir(arguments[1]).absolutePath());
  const QDir out(arguments[2]);
  out.mkpath(QStringLiteral("."));
  QString file;
  brenvo::ui::QtPlatform platform(directory);
  platform.SendPrintsTo(
      [&](bool landscape) { return brenvo::ui::PaperTarget::Pdf(file, landscape); });
  Session session(platform, directory);
  platform.Attach(&session);
  if (brenvo::station::StartStation(session) == nullptr) return 1;
  int status = 0;
  for (const Paper& paper : kPapers) {
    file = out.filePath(QLatin1String(paper.file));
    try {
      paper.print(session);
      // Nothing to print makes no file.
      if (QFile::exists(file)) std::printf("%s\n", qPrintable(file));
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "%s: %s\n", paper.file, failure.what());
      status = 1;
    }
  }
  session.Windows.RunEvent([&] { brenvo::station::StopStation(session); });
  platform.Attach(nullptr);
  return status;
}
