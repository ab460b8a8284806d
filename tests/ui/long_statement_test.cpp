// A statement that takes long, in a station on the screen.
#include <QApplication>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "core/long_run.h"
#include "log/log_form.h"
#include "station/station.h"
#include "tests/support/station.h"
#include "ui/qt_platform.h"

namespace brenvo::ui {
namespace {

class LongStatementOnScreen : public testing::Test {
 protected:
  LongStatementOnScreen() {
    platform.Attach(&session);
    station::StartStation(session);
    session.Db.Execute("insert into Log (DataQso,Call) values ('01/01/2001 10:00','A')");
    for (int i = 0; i < 12; ++i) {
      session.Db.Execute("insert into Log (DataQso,Call) select DataQso,Call+'" +
                         std::to_string(i) + "' from Log");
    }
  }
  ~LongStatementOnScreen() override {
    session.Windows.RunEvent([&] { station::StopStation(session); });
    QCoreApplication::processEvents();
    platform.Attach(nullptr);
  }
  static void WhenModal(std::function<void(QWidget&)> look) {
    QTimer::singleShot(20, [look] {
      if (QWidget* modal = QApplication::activeModalWidget()) {
        look(*modal);
      } else {
        WhenModal(look);
      }
    });
  }

  ScratchStationDirectory directory;
  QtPlatform platform{directory.Path()};
  core::Session session{platform, directory.Path()};
};

TEST_F(LongStatementOnScreen, EscStopsItAndTheGridBehindItHasMissedNothing) {
  log::LogForm* log = nullptr;
  session.Windows.RunEvent([&] {
    log = static_cast<log::LogForm*>(session.Windows.LoadNew("LogForm"));
    session.Windows.Show(*log);
    log->cmVista.Press();
  });
  QTest::qWait(50);
  auto* table = platform.Screen().Main().findChild<QTableView*>();
  ASSERT_NE(table, nullptr);
  std::vector<std::string> boxes;
  WhenModal([&](QWidget& bar) {
    table->viewport()->update();  // who paints now would read from the database
    WhenModal([&, first = &bar](QWidget& modal) {
      EXPECT_EQ(&modal, first);
      QTest::keyClick(&modal, Qt::Key_Escape);
      WhenModal([&](QWidget& told) {
        auto* box = qobject_cast<QMessageBox*>(&told);
        ASSERT_NE(box, nullptr);
        boxes.push_back(box->text().toStdString());
        box->accept();
      });
    });
  });
  bool finished = true;
  session.Windows.RunEvent([&] {
    finished = core::RunLongStatements(session, "Prova", "Interrotta.", [&] {
      // Every contact against every prefix; far more than a second.
      session.Db.OpenSnapshot(
          "select count(*) from Log,Prefissi,Modi where Log.Call+Prefissi.Prefisso like '*zz*'");
    });
  });
  EXPECT_FALSE(finished);
  QTest::qWait(50);
  EXPECT_EQ(boxes, std::vector<std::string>{"Interrotta."});
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(platform.Screen().Main().updatesEnabled());
  EXPECT_EQ(log->DataGrid1.Rows(), 4097);
  EXPECT_EQ(table->model()->index(0, 2).data().toString().left(1), "A");
}

}  // namespace
}  // namespace brenvo::ui
