// The station with the real programs of Hamlib: their dummy transceiver and rotator, a model on a
// serial line whose other end is recorded, and a program of theirs that uses the station's.
#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <QProcess>
#include <regex>
#include <set>
#include <sstream>

#include "base/number.h"
#include "rig/rtx.h"
#include "tests/devices/real_station.h"

namespace brenvo::ui {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

// A port that nothing listens on, as far as one can know.
int FreePort() {
  QTcpServer probe;
  if (!probe.listen(QHostAddress::LocalHost)) throw std::runtime_error("no loopback");
  return probe.serverPort();
}

std::string TextOf(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

class RealHamlib : public RealStation {
 protected:
  void Choose(const char* section, int model, const std::string& device = "") {
    session.SaveSetting(section, "Dove", "nostro");
    session.SaveSetting(section, "Modello", std::to_string(model));
    session.SaveSetting(section, "NomeModello", "prova");
    session.SaveSetting(section, "Porta", device);
    session.SaveSetting(section, "Indirizzo", "127.0.0.1:" + std::to_string(FreePort()));
  }
  rig::Rtx& OpenRtx() { return Open<rig::Rtx>("Rtx"); }
  // What a program of theirs prints that uses what the station serves.
  std::string RigctlSays(const QStringList& commands) {
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start("rigctl", QStringList{"-m", "2", "-r", served_} + commands);
    EXPECT_TRUE(Until([&] { return program.state() == QProcess::NotRunning; }, 20000));
    return program.readAll().trimmed().toStdString();
  }
  void Serve() {
    const int port = FreePort();
    served_ = QStringLiteral("127.0.0.1:%1").arg(port);
    Event([&] {
      EXPECT_EQ(session.Choices.Set(core::choice::kRigServesPort, std::to_string(port)), "");
      EXPECT_EQ(session.Choices.Set(core::choice::kRigServes, "Sì"), "");
    });
  }

 private:
  QString served_;
};

TEST_F(RealHamlib, ATransceiverIsStartedHeardAndTuned) {
  Choose("Rtx", 1);
  rig::Rtx& rtx = OpenRtx();
  ASSERT_TRUE(Until([&] { return session.Rig.Now().has_value(); }, 20000)) << rtx.Stato.Text();
  EXPECT_EQ(rtx.Stato.Text(), "Collegato: prova");
  EXPECT_EQ(rtx.Frequenza.Text(), "145.000.000");
  Event([&] { EXPECT_EQ(session.Rig.Tune(base::Hz(7050000), "SSB"), "Rtx a 7.050.000 LSB"); });
  EXPECT_TRUE(Until([&] { return rtx.Modo.Text() == "LSB"; }));
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(7050000));
  EXPECT_EQ(session.Rig.Now()->modo, "SSB");
  EXPECT_TRUE(Until([&] { return !rtx.Segnale.Text().empty(); })) << "the signal";
  // It is heard again and again: nothing surprises.
  Pass(2500);
  EXPECT_EQ(rtx.Stato.Text(), "Collegato: prova");
}

TEST_F(RealHamlib, OneThatOutlivedAnEarlierEveningIsUsed) {
  Choose("Rtx", 1);
  const std::string address = session.GetSetting("Rtx", "Indirizzo", "");
  QProcess orphan;
  orphan.start("rigctld", {"-m", "1", "-T", "127.0.0.1", "-t",
                           QString::fromStdString(address.substr(address.find(':') + 1))});
  ASSERT_TRUE(orphan.waitForStarted());
  Pass(1000);
  rig::Rtx& rtx = OpenRtx();
  ASSERT_TRUE(Until([&] { return session.Rig.Now().has_value(); }, 20000)) << rtx.Stato.Text();
  orphan.terminate();
  orphan.waitForFinished();
}

TEST_F(RealHamlib, ARotatorIsTurnedAndStopped) {
  Choose("Rotore", 1);
  rig::Rtx& rtx = OpenRtx();
  ASSERT_TRUE(Until([&] { return !rtx.Azimut.Text().empty(); }, 20000)) << rtx.Rotore.Text();
  EXPECT_EQ(rtx.Azimut.Text(), "0°");
  Event([&] {
    rtx.Verso.SetText("90");
    rtx.Verso.TypeKey(forms::kEnter);
  });
  EXPECT_EQ(rtx.Rotore.Text(), "Gira verso 90°");
  EXPECT_TRUE(Until([&] { return rtx.Azimut.Text() != "0°"; })) << "it turns";
  Event([&] { rtx.cmFermaRotore.Press(); });
  EXPECT_TRUE(Until([&] { return rtx.Rotore.Text() == "Collegato: prova"; }));
  const std::string stopped = rtx.Azimut.Text();
  Pass(6000);
  EXPECT_EQ(rtx.Azimut.Text(), stopped);
  // Its limits are -180 to 450: the shorter way to the west is to the left.
  Event([&] {
    rtx.Verso.SetText("350");
    rtx.Verso.TypeKey(forms::kEnter);
  });
  EXPECT_TRUE(Until([&] { return rtx.Azimut.Text() != stopped; }));
  // It may have come through the north by then.
  const double left = std::fmod(base::Val(stopped) - base::Val(rtx.Azimut.Text()) + 360, 360);
  EXPECT_GT(left, 0);
  EXPECT_LT(left, 180);
}

TEST_F(RealHamlib, AProgramOfTheirsHearsAndTunesTheTransceiverThroughTheStation) {
  Choose("Rtx", 1);
  OpenRtx();
  ASSERT_TRUE(Until([&] { return session.Rig.Now().has_value(); }, 20000));
  Serve();
  EXPECT_EQ(RigctlSays({"f"}), "145000000");
  EXPECT_EQ(RigctlSays({"F", "14074000", "M", "USB", "0"}), "");
  EXPECT_TRUE(Until([&] { return session.Rig.Now()->frequency == base::Hz(14074000); }));
  EXPECT_TRUE(Until([&] { return session.Rig.Now()->modo == "SSB"; }));
  EXPECT_THAT(RigctlSays({"m"}), StartsWith("USB"));
  EXPECT_EQ(RigctlSays({"t"}), "0");
  EXPECT_NE(RigctlSays({"T", "1"}), "") << "an error: nothing transmits through it";
}

// Questions of a Kenwood, and what it answers. What would transmit or switch on is no question.
class RecordedKenwood {
 public:
  explicit RecordedKenwood(SerialLine& line) : line_(line) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Answer(); });
    timer_.start(5);
  }
  std::set<std::string> Heard;

 private:
  void Answer() {
    line_.Listen();
    for (std::size_t end = 0; (end = line_.Heard.find(';')) != std::string::npos;) {
      const std::string command = line_.Heard.substr(0, end + 1);
      line_.Heard.erase(0, end + 1);
      Heard.insert(command);
      static const std::pair<const char*, const char*> kAnswers[] = {
          {"ID;", "ID019;"},         {"FA;", "FA00014250000;"},
          {"FB;", "FB00014250000;"}, {"MD;", "MD2;"},
          {"FR;", "FR0;"},           {"FT;", "FT0;"},
          {"PS;", "PS1;"},           {"AI;", "AI0;"},
          {"SM0;", "SM00010;"},      {"TN;", "TN08;"},
          {"SA;", "SA00000000;"},    {"FW;", "FW0000;"},
          {"SL;", "SL00;"},          {"SH;", "SH00;"},
          {"DC;", "DC00;"},          {"IF;", "IF00014250000     -000000000002000000 ;"}};
      const auto at = std::find_if(std::begin(kAnswers), std::end(kAnswers),
                                   [&](const auto& each) { return command == each.first; });
      line_.Say(at == std::end(kAnswers) ? "?;" : at->second);
    }
  }
  SerialLine& line_;
  QTimer timer_;
};

TEST_F(RealHamlib, ASerialLineSeesQuestionsAloneAndItsControlLinesStayAtRest) {
  SerialLine line;
  RecordedKenwood kenwood(line);
  const std::filesystem::path states = directory.Path() / "lines.txt";
  qputenv("LD_PRELOAD", LINE_STATES);
  qputenv("LINE_STATES", states.c_str());
  Choose("Rtx", 2014, line.Device());
  rig::Rtx& rtx = OpenRtx();
  qunsetenv("LD_PRELOAD");
  qunsetenv("LINE_STATES");
  ASSERT_TRUE(Until([&] { return session.Rig.Now().has_value(); }, 30000)) << rtx.Stato.Text();
  EXPECT_EQ(rtx.Frequenza.Text(), "14.250.000");
  Pass(3000);
  for (const std::string& command : kenwood.Heard) {
    EXPECT_TRUE(std::regex_match(command, std::regex("[A-Z]{2}0?;"))) << command;
    for (const char* acts : {"TX", "RX", "KY", "TU", "AC", "PB", "VX", "PC"}) {
      EXPECT_FALSE(command.starts_with(acts)) << command;
    }
  }
  EXPECT_TRUE(kenwood.Heard.contains("FA;") || kenwood.Heard.contains("IF;"));
  std::set<std::string> done;
  std::istringstream told(TextOf(states));
  for (std::string each; std::getline(told, each);) done.insert(each);
  EXPECT_THAT(done, ElementsAre("clear DTR", "clear RTS"));
}

}  // namespace
}  // namespace brenvo::ui
