#include <pty.h>
#include <unistd.h>

#include <filesystem>
#include <future>
#include <QAudioDevice>
#include <QElapsedTimer>
#include <QFile>
#include <QMediaDevices>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <thread>

#include "recorder/fake_clock.h"
#include "tests/ui/screen.h"
#include "ui/qt_devices.h"
#include "ui/qt_printer.h"
#include "ui/qt_serial_port.h"
#include "ui/qt_tcp_client.h"
#include "ui/qt_wave_player.h"
#include "ui/text.h"
#include "ui/thread_work.h"
#include "ui/wave_file.h"

namespace brenvo::ui {
namespace {

using ::testing::HasSubstr;

class Devices : public ScreenTest {
 protected:
  QTemporaryDir directory;
  std::filesystem::path File(const char* name) {
    return PathFromQt(directory.filePath(QString::fromUtf8(name)));
  }
  QtSettings settings{File("Brenvo.ini")};

  template <class Condition>
  static bool WaitFor(Condition condition) {
    return QTest::qWaitFor(condition, 3000);
  }
};

class TcpDevice : public Devices {
 protected:
  TcpDevice() {
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    client.OnData = [this] { received += client.Read(client.BytesWaiting()); };
    client.OnPeerClose = [this] { ++closed; };
  }
  QTcpSocket* Accept() {
    client.Connect("127.0.0.1", server.serverPort());
    WaitFor([&] { return server.hasPendingConnections() && client.IsConnected(); });
    return server.nextPendingConnection();
  }
  QTcpServer server;
  QtTcpClient client{gate};
  std::string received;
  int closed = 0;
};

TEST_F(TcpDevice, SendsAndReceivesBytesAsTheyAre) {
  QTcpSocket* peer = Accept();
  ASSERT_NE(peer, nullptr);
  client.Send("set/\xe8\r\n");
  ASSERT_TRUE(WaitFor([&] { return peer->bytesAvailable() >= 7; }));
  EXPECT_EQ(peer->readAll().toStdString(), "set/\xe8\r\n");
  peer->write("DX de I2ABC: 14020.0  3B8CF\r\n");
  ASSERT_TRUE(WaitFor([&] { return received.size() >= 29; }));
  EXPECT_EQ(received, "DX de I2ABC: 14020.0  3B8CF\r\n");
}

TEST_F(TcpDevice, TellsThatThePeerHasClosed) {
  QTcpSocket* peer = Accept();
  ASSERT_NE(peer, nullptr);
  peer->close();
  EXPECT_TRUE(WaitFor([&] { return closed == 1; }));
  EXPECT_FALSE(client.IsConnected());
}

TEST_F(TcpDevice, AnOwnCloseIsNotThePeersAndLosesNothing) {
  QTcpSocket* peer = Accept();
  ASSERT_NE(peer, nullptr);
  client.Send("/q");
  client.Close();
  EXPECT_TRUE(WaitFor([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
  EXPECT_EQ(peer->readAll().toStdString(), "/q");
  EXPECT_EQ(closed, 0);
}

TEST_F(TcpDevice, TellsThatItIsConnected) {
  int connected = 0;
  client.OnConnected = [&] { ++connected; };
  ASSERT_NE(Accept(), nullptr);
  EXPECT_TRUE(WaitFor([&] { return connected == 1; }));
}

TEST_F(TcpDevice, AFailedAttemptSaysWhyAndIsNoPeersClose) {
  const int port = server.serverPort();
  server.close();
  std::string why;
  client.OnFail = [&](std::string_view reason) { why += reason; };
  client.Connect("127.0.0.1", port);
  EXPECT_TRUE(WaitFor([&] { return !why.empty(); }));
  QTest::qWait(20);
  EXPECT_EQ(why, "connessione rifiutata");
  EXPECT_FALSE(client.IsConnected());
  client.Send("niente");
  EXPECT_EQ(closed, 0);
}

TEST_F(TcpDevice, TheConnectionMayGoInItsOwnEvent) {
  auto owned = std::make_unique<QtTcpClient>(gate);
  owned->OnPeerClose = [&] { owned.reset(); };
  owned->Connect("127.0.0.1", server.serverPort());
  ASSERT_TRUE(WaitFor([&] { return server.hasPendingConnections() && owned->IsConnected(); }));
  server.nextPendingConnection()->close();
  EXPECT_TRUE(WaitFor([&] { return owned == nullptr; }));
}

class SerialDevice : public Devices {
 protected:
  SerialDevice() {
    char name[128];
    EXPECT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    settings.SaveSetting("Porte", "COM2", name);
    port.SetPortNumber(2);
    port.SetSettings("4800,N,8,2");
  }
  ~SerialDevice() override {
    ::close(master);
    ::close(slave);
  }
  int master = -1, slave = -1;
  QtSerialPort port{gate, settings};
};

TEST_F(SerialDevice, WritesAndReadsBytesOfTheMappedDevice) {
  std::string received;
  port.OnReceive = [&] { received += port.Read(port.BytesWaiting()); };
  port.Open();
  ASSERT_TRUE(port.IsOpen());
  port.Write(std::string("\x20\x20\x20\x20\x00", 5));
  char bytes[8] = {};
  ASSERT_EQ(::read(master, bytes, sizeof bytes), 5);
  EXPECT_EQ(std::string(bytes, 5), std::string("\x20\x20\x20\x20\x00", 5));
  ASSERT_EQ(::write(master, "\x50\x00\x00\x00\xf7", 5), 5);
  ASSERT_TRUE(WaitFor([&] { return received.size() == 5; }));
  EXPECT_EQ(received, std::string("\x50\x00\x00\x00\xf7", 5));
}

TEST_F(SerialDevice, ReadsNoMoreThanItIsAskedFor) {
  port.Open();
  ASSERT_EQ(::write(master, "abc", 3), 3);
  ASSERT_TRUE(WaitFor([&] { return port.BytesWaiting() == 3; }));
  EXPECT_EQ(port.Read(1), "a");
  EXPECT_EQ(port.BytesWaiting(), 2u);
}

TEST_F(SerialDevice, AMissingPortIsToldInItalianWithItsDevice) {
  settings.SaveSetting("Porte", "COM2", "/dev/nessuna");
  try {
    port.Open();
    FAIL() << "opened";
  } catch (const platform::DeviceError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("La porta COM2 (/dev/nessuna) non si apre"));
  }
}

TEST_F(SerialDevice, WritingToAClosedPortIsAFailure) {
  EXPECT_THROW(port.Write("x"), platform::DeviceError);
  EXPECT_EQ(port.Read(5), "");
  port.Close();
}

TEST_F(Devices, ATimerTicksUntilItIsDisabledAndAnIntervalOfZeroNever) {
  QtTimer timer(gate);
  int ticks = 0;
  timer.OnTick = [&] {
    if (++ticks == 3) timer.SetEnabled(false);
  };
  timer.SetEnabled(true);
  QTest::qWait(30);
  EXPECT_EQ(ticks, 0);
  timer.SetInterval(5);
  EXPECT_TRUE(WaitFor([&] { return ticks == 3; }));
  QTest::qWait(30);
  EXPECT_EQ(ticks, 3);
  EXPECT_FALSE(timer.Enabled());
}

TEST_F(Devices, SettingsAreOnDiskAtOnceAndKeepTheirBlanks) {
  settings.SaveSetting("HrdMode", "ModiUsati", "SSB,CW,");
  settings.SaveSetting("HrdMode", "BandaUsata", "  2 m");
  settings.SaveSetting("Log", "Città", "Forlì");
  QtSettings again{File("Brenvo.ini")};
  EXPECT_EQ(again.GetSetting("HrdMode", "ModiUsati", ""), "SSB,CW,");
  EXPECT_EQ(again.GetSetting("HrdMode", "BandaUsata", ""), "  2 m");
  EXPECT_EQ(again.GetSetting("Log", "Città", ""), "Forlì");
  EXPECT_EQ(again.GetSetting("Log", "X", "120"), "120");
}

// A wave file of silence: 16 bits, one channel.
void WriteWave(const std::filesystem::path& path, int samples) {
  QByteArray bytes("RIFF----WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x80\x3e\0\0\x02\0\x10\0data",
                   40);
  const quint32 length = static_cast<quint32>(samples) * 2;
  bytes.append(reinterpret_cast<const char*>(&length), 4);
  bytes.append(QByteArray(static_cast<qsizetype>(length), '\0'));
  QFile file(PathToQt(path));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

TEST_F(Devices, AWaveFileIsReadWithItsFormatAndLength) {
  WriteWave(File("cq.wav"), 4000);
  const auto wave = ReadWaveFile(File("cq.wav"));
  ASSERT_TRUE(wave.has_value());
  EXPECT_EQ(wave->format.sampleRate(), 8000);
  EXPECT_EQ(wave->format.sampleFormat(), QAudioFormat::Int16);
  EXPECT_EQ(wave->Milliseconds(), 500);
}

TEST_F(Devices, AFileThatIsNoWaveIsNone) {
  QFile file(PathToQt(File("no.wav")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("RIFFxxxxWAVEfmt ");
  file.close();
  EXPECT_FALSE(ReadWaveFile(File("no.wav")).has_value());
  EXPECT_FALSE(ReadWaveFile(File("missing.wav")).has_value());
}

TEST_F(Devices, AMissingWaveCostsNoTimeAndEndsNormally) {
  QtWavePlayer player(gate);
  QElapsedTimer clock;
  clock.start();
  player.PlayAndWait(File("missing.wav"));
  EXPECT_LT(clock.elapsed(), 500);
  int code = 0;
  player.OnComplete = [&](int told) { code = told; };
  player.Start(File("missing.wav"));
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(WaitFor([&] { return code == 1; }));
}

TEST_F(Devices, AMachineWithoutASoundDeviceIsSilentAndCostsNoTime) {
  if (!QMediaDevices::defaultAudioOutput().isNull()) GTEST_SKIP() << "there is one here";
  WriteWave(File("cq.wav"), 80000);  // ten seconds
  QtWavePlayer player(gate);
  QElapsedTimer clock;
  clock.start();
  player.PlayAndWait(File("cq.wav"));
  int code = 0;
  player.OnComplete = [&](int told) { code = told; };
  player.Start(File("cq.wav"));
  EXPECT_TRUE(WaitFor([&] { return code == 1; }));
  EXPECT_LT(clock.elapsed(), 500);
}

TEST_F(Devices, AClosedPlaybackDoesNotComplete) {
  QtWavePlayer player(gate);
  int completions = 0;
  player.OnComplete = [&](int) { ++completions; };
  player.Start(File("missing.wav"));
  player.Close();
  QTest::qWait(50);
  EXPECT_EQ(completions, 0);
}

TEST_F(Devices, WhileASoundIsWaitedForDevicesWait) {
  QObject guard;
  Told told;
  {
    const EventGate::Hold hold(gate);
    gate.RunDevice(guard, [&] { told.push_back("data"); });
    Settle();
    EXPECT_TRUE(told.empty());
  }
  Settle();
  EXPECT_THAT(told, ::testing::ElementsAre("data"));
}

class PrinterDevice : public Devices {
 protected:
  QString file = directory.filePath("page.pdf");
  QtPrinter printer{[this](bool landscape) -> std::unique_ptr<PageTarget> {
                      if (cancelled) return nullptr;
                      return PaperTarget::Pdf(file, landscape);
                    },
                    [](const forms::Window&) { return QPixmap(); }};
  bool cancelled = false;

  QByteArray Pdf() {
    QFile pdf(file);
    return pdf.open(QIODevice::ReadOnly) ? pdf.readAll() : QByteArray();
  }
};

TEST_F(PrinterDevice, PrintsPagesWithTextLinesAndBoxes) {
  printer.SetFont("Times New Roman", 14, true);
  printer.Text(base::Mm(20), base::Mm(30), "LOG FOGLIO DI STAZIONE");
  printer.TextRight(base::Mm(180), base::Mm(30), "59");
  printer.Line(base::Mm(0), base::Mm(43), base::Mm(195), base::Mm(43));
  printer.Box(base::Mm(10), base::Mm(50), base::Mm(13), base::Mm(53), true);
  printer.NewPage();
  printer.Box(base::Mm(10), base::Mm(50), base::Mm(13), base::Mm(53), false);
  printer.EndDocument();
  const QByteArray pdf = Pdf();
  EXPECT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_THAT(pdf.toStdString(), HasSubstr("/Count 2"));
}

TEST_F(PrinterDevice, TellsThePageInMillimetres) {
  EXPECT_GT(printer.PageHeight().Value(), 250);
  EXPECT_LE(printer.PageHeight().Value(), 297);
  EXPECT_LE(printer.PageWidth().Value(), 210);
  printer.EndDocument();
}

TEST_F(PrinterDevice, TheNextDocumentLiesOnItsSideAndTheOneAfterItStands) {
  printer.SetLandscape(true);
  EXPECT_GT(printer.PageWidth(), printer.PageHeight());
  printer.EndDocument();
  EXPECT_LT(printer.PageWidth(), printer.PageHeight());
  printer.EndDocument();
}

TEST_F(PrinterDevice, EveryDocumentBeginsInThePrintersOwnFont) {
  const base::Mm own = printer.TextWidth("IK3ABC");
  printer.SetFont("Times New Roman", 24, true);
  EXPECT_GT(printer.TextWidth("IK3ABC"), own * 2);
  printer.EndDocument();
  EXPECT_EQ(printer.TextWidth("IK3ABC"), own);
}

TEST_F(PrinterDevice, MeasuresATextInTheFontInUse) {
  printer.SetFont("Times New Roman", 10, false);
  const base::Mm small = printer.TextWidth("I2ABC");
  printer.SetFontSize(20);
  EXPECT_NEAR(printer.TextWidth("I2ABC").Value(), 2 * small.Value(), 0.5);
  EXPECT_EQ(printer.TextWidth("").Value(), 0);
  printer.EndDocument();
}

TEST_F(PrinterDevice, ACancelledDialogIsAFailureOfEachOperation) {
  cancelled = true;
  EXPECT_THROW(printer.Text(base::Mm(0), base::Mm(0), "x"), platform::DeviceError);
  EXPECT_THROW(printer.PageHeight(), platform::DeviceError);
  cancelled = false;
  printer.Text(base::Mm(0), base::Mm(0), "x");
  printer.EndDocument();
  EXPECT_FALSE(Pdf().isEmpty());
}

TEST_F(PrinterDevice, APrinterThatCannotBeReachedIsToldAndTheNextTryIsSound) {
  const QString sound = file;
  file = directory.filePath("gone/page.pdf");
  for (int tries = 0; tries < 2; ++tries) {
    try {
      printer.Text(base::Mm(0), base::Mm(0), "x");
      ADD_FAILURE() << "nothing was told";
    } catch (const platform::DeviceError& failure) {
      EXPECT_EQ(failure.what(), "Il file " + file.toStdString() + " non si può scrivere");
    }
  }
  file = sound;
  printer.Text(base::Mm(0), base::Mm(0), "x");
  printer.EndDocument();
  EXPECT_TRUE(Pdf().startsWith("%PDF"));
}

TEST_F(PrinterDevice, EndingADocumentThatWasNotBegunIsNothing) {
  printer.EndDocument();
  EXPECT_TRUE(Pdf().isEmpty());
}

TEST_F(Devices, QuestionsAreAnsweredInItalianAndEscMeansNo) {
  QtMessageBox messages;
  Told buttons;
  WhenModal([&](QWidget& modal) {
    for (const auto* button : modal.findChildren<QPushButton*>()) {
      buttons.push_back(FromQt(button->text()));
    }
    QTest::keyClick(&modal, Qt::Key_Escape);
  });
  EXPECT_FALSE(messages.AskYesNo("Cancellazione Qso", "Confermi l'operazione ?"));
  EXPECT_THAT(buttons, ::testing::UnorderedElementsAre("&Sì", "&No"));
}

TEST_F(Devices, ABoxIsWideEnoughForItsTitle) {
  const std::string title = "Qso doppio (12345) con una stazione già collegata";
  QtMessageBox messages;
  int room = 0;
  WhenModal([&](QWidget& modal) {
    room = modal.width();
    modal.close();
  });
  messages.AskYesNo(title, "Confermi call ?");
  EXPECT_GT(room, QFontMetrics(QApplication::font()).horizontalAdvance(title.c_str()));
}

TEST_F(Devices, EnterByHabitDoesNotConfirm) {
  QtMessageBox messages;
  WhenModal([](QWidget& modal) { QTest::keyClick(&modal, Qt::Key_Return); });
  EXPECT_FALSE(messages.AskYesNo("Azzeramento Log", "Confermi l'operazione ?"));
}

TEST_F(Devices, OnlyTheYesButtonConfirms) {
  QtMessageBox messages;
  WhenModal([](QWidget& modal) {
    for (auto* button : modal.findChildren<QPushButton*>()) {
      if (button->text() == "&Sì") button->click();
    }
  });
  EXPECT_TRUE(messages.AskYesNo("Azzeramento Log", "Confermi l'operazione ?"));
}

TEST_F(Devices, WorkInTheBackgroundRunsBesideTheProgramsOwn) {
  std::promise<void> goOn;
  int done = 0;
  ThreadWork work([&](const std::stop_token&) {
    goOn.get_future().wait();
    done = 7;
  });
  EXPECT_FALSE(work.HasEnded());
  goOn.set_value();
  EXPECT_TRUE(WaitFor([&] { return work.HasEnded(); }));
  EXPECT_EQ(done, 7);
}

TEST_F(Devices, WorkInTheBackgroundThatGoesIsStoppedAndWaitedFor) {
  bool stopped = false;
  {
    ThreadWork work([&](const std::stop_token& stop) {
      while (!stop.stop_requested()) std::this_thread::yield();
      stopped = true;
    });
  }
  EXPECT_TRUE(stopped);
}

TEST(Clock, TellsUtcAsTheSystemDoes) {
  QtClock clock;
  const QDateTime before = QDateTime::currentDateTimeUtc();
  const base::DateTime utc = clock.UtcNow();
  const auto seconds =
      before.secsTo(QDateTime(QDate(utc.Year(), utc.Month(), utc.Day()),
                              QTime(utc.Hour(), utc.Minute(), utc.Second()), Qt::UTC));
  EXPECT_GE(seconds, -1);
  EXPECT_LE(seconds, 5);
}

// Around the changes of the clocks of each zone; the computer's own zone is whatever it is.
TEST(Clock, KnowsTheChangesOfEachZone) {
  QtClock clock;
  const auto offsets = [&](const char* zone, int month, int day, int hour, int minute) {
    return clock.OffsetsOfLocal(base::DateTime::Of(2024, month, day, hour, minute), zone);
  };
  using Offsets = std::vector<int>;
  EXPECT_EQ(offsets("Europe/Rome", 3, 31, 1, 59), Offsets({60}));
  EXPECT_EQ(offsets("Europe/Rome", 3, 31, 2, 30), Offsets());
  EXPECT_EQ(offsets("Europe/Rome", 3, 31, 3, 0), Offsets({120}));
  EXPECT_EQ(offsets("Europe/Rome", 10, 27, 2, 0), Offsets({120, 60}));
  EXPECT_EQ(offsets("Europe/Rome", 10, 27, 3, 0), Offsets({60}));
  EXPECT_EQ(offsets("America/New_York", 11, 3, 1, 30), Offsets({-240, -300}));
  EXPECT_EQ(offsets("Australia/Lord_Howe", 4, 7, 1, 45), Offsets({660, 630}));
  EXPECT_EQ(offsets("Australia/Lord_Howe", 10, 6, 2, 15), Offsets());
  EXPECT_EQ(offsets("Asia/Kathmandu", 6, 1, 0, 0), Offsets({345}));
  EXPECT_EQ(offsets("UTC", 3, 31, 2, 30), Offsets({0}));
  EXPECT_EQ(clock.OffsetOfUtc(base::DateTime::Of(2024, 3, 31, 0, 59, 59), "Europe/Rome"), 60);
  EXPECT_EQ(clock.OffsetOfUtc(base::DateTime::Of(2024, 3, 31, 1, 0, 0), "Europe/Rome"), 120);
}

TEST(Clock, AgreesWithTheRecordedOneInItaly) {
  QtClock clock;
  recorder::FakeClock recorded;
  for (int day = 0; day < 366 * 3; ++day) {
    for (const int minutes : {30, 90, 150, 210}) {
      const auto time = base::DateTime::FromSeconds(base::DateTime::Of(2023, 1, 1).Seconds() +
                                                    (day * 24 * 60 + minutes) * std::int64_t(60));
      ASSERT_EQ(clock.OffsetsOfLocal(time, "Europe/Rome"), recorded.OffsetsOfLocal(time, ""))
          << base::IsoText(time);
      ASSERT_EQ(clock.OffsetOfUtc(time, "Europe/Rome"), recorded.OffsetOfUtc(time, ""))
          << base::IsoText(time);
    }
  }
}

TEST(Clock, KnowsAZoneByItsName) {
  QtClock clock;
  EXPECT_TRUE(clock.KnowsZone(""));
  EXPECT_TRUE(clock.KnowsZone("Europe/Rome"));
  EXPECT_FALSE(clock.KnowsZone("Europa/Roma"));
  const base::DateTime time = base::DateTime::Of(2024, 6, 1);
  EXPECT_EQ(clock.OffsetOfUtc(time, "Europa/Roma"), clock.OffsetOfUtc(time, ""));
}

}  // namespace
}  // namespace brenvo::ui
