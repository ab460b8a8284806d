// A secret that the operator types goes to the service, and to nothing that the station writes.
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <fstream>
#include <iterator>

#include "conferme/conferme.h"
#include "core/log_time.h"
#include "station/station.h"
#include "tests/support/station.h"
#include "tests/ui/screen.h"
#include "tests/ui/web_service.h"
#include "ui/qt_platform.h"

namespace brenvo::ui {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kPlanted = "Pl4nted-S3cret";

class Secret : public testing::Test {
 protected:
  Secret() {
    addresses.lotw = addresses.eqsl = addresses.qrz = addresses.clubLog =
        "http://127.0.0.1:" + std::to_string(server.serverPort());
    session = std::make_unique<core::Session>(platform, directory.Path());
    platform.Attach(session.get());
    auto kept = std::make_unique<FakeKeyring>();
    keyring = kept.get();
    platform.KeepSecretsIn(std::move(kept));
    EXPECT_NE(station::StartStation(*session), nullptr);
    session->Db.Execute("update [User] set Call='IK0XYZ'");
    session->Db.Execute(
        "insert into Log (DataQso,Call,Banda,Modo) values ('01/01/2001 22:14','CT7AAA',' 20 m',"
        "'CW')");
    core::StoreLogTime(*session, core::LogTime::kUtc);
    window = &static_cast<conferme::Conferme&>(
        session->Windows.Adopt(std::make_unique<conferme::Conferme>(*session, addresses)));
    session->Windows.RunEvent([&] { session->Windows.Show(*window); });
  }
  ~Secret() override {
    session->Windows.RunEvent([&] { station::StopStation(*session); });
    QCoreApplication::processEvents();
    platform.Attach(nullptr);
    session.reset();
  }
  void Choose(conferme::Service of) {
    session->Windows.RunEvent([&] { window->Servizio.SetListIndex(static_cast<int>(of) + 1); });
  }
  void Press(forms::Command& command) {
    session->Windows.RunEvent([&] { command.Press(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->cmFerma.Enabled(); }, 10000));
    said += window->Avviso.Text() + "\n";
  }
  static void TypeIt() {
    ScreenTest::WhenModal([](QWidget& box) {
      auto* const line = box.findChild<QLineEdit*>();
      ASSERT_NE(line, nullptr);
      QTest::keyClicks(line, kPlanted);
      QTest::keyClick(line, Qt::Key_Return);
    });
  }
  // Files whose bytes hold it.
  std::vector<std::string> Holding() {
    std::vector<std::string> holding;
    int looked = 0;
    for (const auto& each : std::filesystem::recursive_directory_iterator(directory.Path())) {
      if (!each.is_regular_file()) continue;
      ++looked;
      std::ifstream in(each.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(in), {}};
      if (bytes.find(kPlanted) != bytes.npos) holding.push_back(each.path().filename().string());
    }
    EXPECT_GT(looked, 2);
    return holding;
  }

  ScratchStationDirectory directory;
  QTcpServer server;
  Service service{server};
  conferme::Addresses addresses;
  QtPlatform platform{directory.Path()};
  std::unique_ptr<core::Session> session;
  FakeKeyring* keyring = nullptr;
  conferme::Conferme* window = nullptr;
  std::string said;
};

TEST_F(Secret, StandsInNothingThatTheStationWritesOrSays) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const std::string report =
      "<PROGRAMID:4>LoTW<APP_LoTW_LASTQSL:19>2001-02-02 11:00:00<APP_LoTW_NUMREC:1>1<eoh>\r\n"
      "<CALL:6>CT7AAA<BAND:3>20M<MODE:2>CW<QSO_DATE:8>20010101<TIME_ON:6>221400<QSL_RCVD:1>Y<eor>"
      "\r\n<APP_LoTW_EOF>\r\n";
  // A report, then each way in which a service can refuse; the first time without a keyring.
  keyring->failure = "no bus";
  service.answers = {Whole(report), Whole("no", "500 No")};
  Choose(conferme::Service::kLotw);
  TypeIt();
  Press(window->cmScarica);
  EXPECT_THAT(said, HasSubstr("abbinati 1"));
  EXPECT_THAT(service.asked, HasSubstr(kPlanted));
  keyring->failure.clear();
  for (const std::string& answer :
       {Whole("<html>Username/password incorrect</html>"), Whole("no", "401 No"),
        std::string("nonsense"), std::string("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nx"),
        std::string("HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: http://example.org/"
                    "\r\n\r\n")}) {
    service.answers = {answer};
    if (keyring->kept.empty()) TypeIt();
    Press(window->cmScarica);
  }
  // What is sent, to services that take it and that do not.
  for (const auto& [of, answer] :
       {std::pair(conferme::Service::kEqsl, Whole("Result: 1 out of 1 records added")),
        {conferme::Service::kQrz, Whole("RESULT=FAIL&REASON=no")}}) {
    keyring->kept.clear();
    service.answers = {answer};
    Choose(of);
    TypeIt();
    Press(window->cmInvia);
    EXPECT_EQ(keyring->kept.size(), 1U);
  }
  EXPECT_THAT(said, HasSubstr("Inviati a eQSL: 1 Qso"));
  EXPECT_THAT(said, HasSubstr("rifiutati 1"));
  EXPECT_THAT(said, Not(HasSubstr(kPlanted)));
  EXPECT_THAT(Holding(), testing::IsEmpty());
  // With all that was in memory written.
  session->CloseForCompaction();
  EXPECT_THAT(Holding(), testing::IsEmpty());
  session->ReopenAfterCompaction();
  EXPECT_THAT(testing::internal::GetCapturedStdout(), Not(HasSubstr(kPlanted)));
  EXPECT_THAT(testing::internal::GetCapturedStderr(), Not(HasSubstr(kPlanted)));
}

}  // namespace
}  // namespace brenvo::ui
