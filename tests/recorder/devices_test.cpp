#include <gmock/gmock.h>

#include <fstream>

#include "forms/window.h"
#include "recorder/recording_platform.h"
#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Devices : public testing::Test {
 protected:
  Devices() { machine.SetApplicationDirectory("/op"); }
  RecordingPlatform machine;
};

TEST_F(Devices, WritesOnASerialLineAreHexadecimal) {
  const auto port = machine.MakeSerialPort();
  port->SetPortNumber(2);
  port->SetSettings("9600,N,8,1");
  port->Open();
  port->Write(std::string("\x20\x20\x20\x20\x00", 5));
  EXPECT_THAT(machine.TakeLines(), ElementsAre("sent COM2 20 20 20 20 00"));
  EXPECT_EQ(machine.Serial().Settings(2), "9600,N,8,1");
}

TEST_F(Devices, BytesOfASerialLineComeInOneEvent) {
  const auto port = machine.MakeSerialPort();
  port->Open();
  int events = 0;
  port->OnReceive = [&] { ++events; };
  machine.Serial().Receive(1, "abc");
  EXPECT_EQ(events, 1);
  EXPECT_EQ(port->BytesWaiting(), 3u);
  EXPECT_EQ(port->Read(1), "a");
  EXPECT_EQ(port->Read(100), "bc");
  EXPECT_EQ(port->Read(100), "");
}

TEST_F(Devices, ASerialPortIsOpenOnce) {
  const auto first = machine.MakeSerialPort();
  auto second = machine.MakeSerialPort();
  first->Open();
  EXPECT_THROW(second->Open(), platform::DeviceError);
  first->Close();
  second->Open();
  second.reset();
  EXPECT_FALSE(machine.Serial().IsOpen(1));
}

TEST_F(Devices, ASerialPortBeyondFourDoesNotExist) {
  const auto port = machine.MakeSerialPort();
  port->SetPortNumber(5);
  EXPECT_THROW(port->Open(), platform::DeviceError);
}

TEST_F(Devices, AClosedSerialPortTakesAndGivesNothing) {
  const auto port = machine.MakeSerialPort();
  EXPECT_THROW(port->Write("x"), platform::DeviceError);
  EXPECT_THROW(machine.Serial().Receive(1, "x"), Refused);
  port->Close();
  EXPECT_THAT(machine.TakeLines(), IsEmpty());
}

TEST_F(Devices, OnlyTheNextUseOfASerialPortFails) {
  const auto port = machine.MakeSerialPort();
  machine.Serial().FailNext(1);
  EXPECT_THROW(port->Open(), platform::DeviceError);
  port->Open();
  machine.Serial().FailNext(1);
  EXPECT_THROW(port->Write("x"), platform::DeviceError);
  port->Write("x");
  EXPECT_THAT(machine.TakeLines(), ElementsAre("sent COM1 78"));
}

TEST_F(Devices, AConnectionIsCalledByItsWindow) {
  const auto client = machine.MakeTcpClient("TNCtelnet");
  EXPECT_FALSE(client->IsConnected());
  client->Connect("cluster.example", 7300);
  EXPECT_TRUE(client->IsConnected());
  client->Send("dx\r\n\xE0");
  client->Close();
  client->Close();
  EXPECT_THAT(machine.TakeLines(),
              ElementsAre("connect TNCtelnet \"cluster.example\" 7300",
                          "sent TNCtelnet \"dx\\r\\nà\"", "disconnect TNCtelnet"));
}

TEST_F(Devices, AHostWithoutAPortIsTheTelnetPort) {
  machine.MakeTcpClient("WWConv")->Connect("host", 0);
  EXPECT_THAT(machine.TakeLines(), ElementsAre("connect WWConv \"host\" 23"));
}

TEST_F(Devices, DataOfAConnectionComesAsOneChunk) {
  const auto client = machine.MakeTcpClient("WWConv");
  std::string read;
  client->OnData = [&] { read += client->Read(client->BytesWaiting()) + '|'; };
  client->Connect("host", 1);
  machine.Tcp().Receive("WWConv", "<*I3XYZ*>");
  machine.Tcp().Receive("WWConv", "b");
  EXPECT_EQ(read, "<*I3XYZ*>|b|");
}

TEST_F(Devices, APeersCloseEndsTheConnectionFirst) {
  auto client = machine.MakeTcpClient("WWConv");
  client->Connect("host", 1);
  machine.TakeLines();
  bool connected = true;
  client->OnPeerClose = [&] {
    connected = client->IsConnected();
    client->Send("/q");
    client->Close();
    client.reset();
  };
  machine.Tcp().PeerClose("WWConv");
  EXPECT_FALSE(connected);
  EXPECT_THAT(machine.TakeLines(), IsEmpty());
  EXPECT_THROW(machine.Tcp().PeerClose("WWConv"), Refused);
}

TEST_F(Devices, AFailingConnectionDoesNotCome) {
  const auto client = machine.MakeTcpClient("TNCtelnet");
  machine.Tcp().FailNext("TNCtelnet");
  client->Connect("host", 1);
  EXPECT_FALSE(client->IsConnected());
  client->Send("unheard");
  EXPECT_THAT(machine.TakeLines(), ElementsAre("connect TNCtelnet \"host\" 1"));
  EXPECT_THROW(machine.Tcp().Receive("TNCtelnet", "x"), Refused);
}

TEST_F(Devices, AFailingSendIsADeviceError) {
  const auto client = machine.MakeTcpClient("TNCtelnet");
  client->Connect("host", 1);
  machine.Tcp().FailNext("TNCtelnet");
  EXPECT_THROW(client->Send("x"), platform::DeviceError);
}

TEST_F(Devices, DatagramsComeOneByOneAndGoAsLines) {
  const auto socket = machine.MakeUdpSocket("WSJTX");
  std::vector<std::string> read;
  socket->OnData = [&] {
    while (const auto datagram = socket->Receive()) {
      read.push_back(datagram->bytes + " from " + std::to_string(datagram->from.port));
    }
  };
  socket->Open({{"127.0.0.1", 2237}, "224.0.0.1", {"lo"}});
  machine.Udp().Receive("WSJTX", {"127.0.0.1", 50001}, "a");
  machine.Udp().ReceiveAll("WSJTX", {{{"127.0.0.1", 1}, "b"}, {{"127.0.0.1", 2}, "c"}});
  socket->Send({"127.0.0.1", 50001}, "\xAD\x01");
  socket->Close();
  socket->Close();
  socket->Send({"127.0.0.1", 50001}, "unheard");
  EXPECT_THAT(read, ElementsAre("a from 50001", "b from 1", "c from 2"));
  EXPECT_THAT(machine.TakeLines(),
              ElementsAre("listen WSJTX \"127.0.0.1:2237\" group \"224.0.0.1\" on \"lo\"",
                          "datagram WSJTX 127.0.0.1:50001 AD01", "deaf WSJTX"));
  EXPECT_THROW(machine.Udp().Receive("WSJTX", {"127.0.0.1", 1}, "x"), Refused);
}

TEST_F(Devices, AFailingListenerIsADeviceErrorAndHearsNothing) {
  const auto socket = machine.MakeUdpSocket("ADIF");
  machine.Udp().FailNext("ADIF");
  EXPECT_THROW(socket->Open({{"127.0.0.1", 2333}, {}, {}}), platform::DeviceError);
  EXPECT_FALSE(socket->IsOpen());
  socket->Open({{"127.0.0.1", 2333}, {}, {}});
  EXPECT_TRUE(machine.Udp().IsOpen("ADIF"));
}

TEST_F(Devices, AProgramEndsAsItWasForeseenOrGoesOnUntilItIsStopped) {
  const auto process = machine.MakeProcess();
  std::string output;
  process->OnEnd = [&](const platform::ProgramEnd& end) { output = end.output; };
  machine.Processes().Queue("rigctl", "-l", {0, "list"});
  process->Start({"rigctl", {"-l"}, 1000});
  EXPECT_EQ(output, "list");
  EXPECT_FALSE(process->IsRunning());
  process->Start({"rigctld", {"-m", "1"}, 0});
  EXPECT_TRUE(machine.Processes().IsRunning("rigctld"));
  machine.Processes().End("rigctld", {2, "gone"});
  EXPECT_EQ(output, "gone");
  process->Start({"rigctld", {"-m", "1"}, 0});
  process->Stop();
  process->Stop();
  EXPECT_THAT(machine.TakeLines(), ElementsAre("process rigctl \"-l\"", "process rigctld \"-m 1\"",
                                               "process rigctld \"-m 1\"", "process-stop rigctld"));
}

TEST_F(Devices, AProgramThatNobodyForesawIsRefused) {
  const auto process = machine.MakeProcess();
  EXPECT_THROW(process->Start({"rigctl", {"-l"}, 1000}), Refused);
  machine.Processes().Queue("rigctl", "-l", {});
  EXPECT_THROW(process->Start({"rigctl", {"-m"}, 1000}), Refused);
  EXPECT_THROW(machine.Processes().End("rigctld", {}), Refused);
  machine.Processes().FailNext("rigctld");
  EXPECT_THROW(process->Start({"rigctld", {}, 0}), platform::DeviceError);
  EXPECT_FALSE(process->IsRunning());
}

TEST_F(Devices, AServerHearsProgramsAndItsAnswersAreLines) {
  const auto server = machine.MakeTcpServer("RIGSERVER");
  std::string heard;
  int gone = 0;
  server->OnData = [&](int peer) { heard += server->Read(peer, 2); };
  server->OnGone = [&](int peer) { gone = peer; };
  EXPECT_THROW(machine.Servers().Receive("RIGSERVER", 1, "f"), Refused);
  machine.Servers().FailNext("RIGSERVER");
  EXPECT_THROW(server->Listen(4534), platform::DeviceError);
  server->Listen(4534);
  machine.Servers().Receive("RIGSERVER", 1, "f\n");
  server->Send(1, "7\n");
  server->Send(2, "to nobody");
  machine.Servers().PeerClose("RIGSERVER", 1);
  server->Send(1, "to nobody");
  machine.Servers().Receive("RIGSERVER", 3, "q\n");
  server->Drop(3);
  server->Close();
  EXPECT_EQ(heard, "f\nq\n");
  EXPECT_EQ(gone, 1);
  EXPECT_THAT(machine.TakeLines(), ElementsAre("serve RIGSERVER 4534", "sent RIGSERVER 1 \"7\\n\"",
                                               "drop RIGSERVER 3", "unserve RIGSERVER"));
}

TEST_F(Devices, PlaybacksAreLines) {
  const auto player = machine.MakeWavePlayer();
  player->PlayAndWait("/op/A.wav");
  player->Start("/op/cq.wav");
  EXPECT_TRUE(machine.Waves().Playing());
  player->Close();
  EXPECT_FALSE(machine.Waves().Playing());
  EXPECT_THAT(machine.TakeLines(),
              ElementsAre("wave \"A.wav\"", "wave-start \"cq.wav\"", "wave-close"));
}

TEST_F(Devices, AStartedPlaybackCompletesWithACode) {
  const auto player = machine.MakeWavePlayer();
  int ended = 0;
  player->OnComplete = [&](int code) { ended = code; };
  EXPECT_THROW(machine.Waves().Complete(1), Refused);
  player->Start("/op/cq.wav");
  machine.Waves().Complete(4);
  EXPECT_EQ(ended, 4);
  EXPECT_THROW(machine.Waves().Complete(1), Refused);
}

TEST_F(Devices, PrintingIsAListOfOperations) {
  platform::Printer& printer = machine.GetPrinter();
  printer.Text(base::Mm(1), base::Mm(2), "a");
  printer.SetFont("Times New Roman", 10, true);
  printer.Text(base::Mm(31.755), base::Mm(20), "I3XYZ");
  printer.SetBold(false);
  printer.SetFontSize(8.25);
  printer.TextRight(base::Mm(72), base::Mm(40.5), "12");
  printer.SetFont("", 9, true);
  printer.Text(base::Mm(0), base::Mm(0), "\"");
  printer.Line(base::Mm(10), base::Mm(241), base::Mm(139), base::Mm(241));
  printer.Box(base::Mm(1), base::Mm(2), base::Mm(3), base::Mm(4), false);
  printer.Box(base::Mm(1), base::Mm(2), base::Mm(3), base::Mm(4), true);
  printer.Picture("/op/Sign.bmp", base::Mm(150), base::Mm(245.5));
  printer.NewPage();
  printer.EndDocument();
  EXPECT_THAT(machine.TakeLines(),
              ElementsAre("print text 1 2 left \"Arial\" 10 plain \"a\"",
                          "print text 31.76 20 left \"Times New Roman\" 10 bold \"I3XYZ\"",
                          "print text 72 40.5 right \"Times New Roman\" 8.25 plain \"12\"",
                          "print text 0 0 left \"Times New Roman\" 9 bold \"\\\"\"",
                          "print line 10 241 139 241", "print box 1 2 3 4 empty",
                          "print box 1 2 3 4 filled", "print picture \"Sign.bmp\" 150 245.5",
                          "print newpage", "print end"));
}

TEST_F(Devices, OnlyTheNextUseOfThePrinterFails) {
  machine.GetPrinter().FailNext();
  EXPECT_THROW(machine.GetPrinter().NewPage(), platform::DeviceError);
  machine.GetPrinter().NewPage();
  machine.GetPrinter().FailNext();
  EXPECT_THROW(machine.Reports().Print("/op/logv.rpt"), platform::DeviceError);
  EXPECT_THAT(machine.TakeLines(), ElementsAre("print newpage"));
}

TEST_F(Devices, AReportNeedsItsLayout) {
  EXPECT_THROW(machine.Reports().Print("/op/no.rpt"), std::runtime_error);
  const auto layout = std::filesystem::temp_directory_path() / "devices_test.rpt";
  std::ofstream(layout) << "layout";
  machine.SetApplicationDirectory(layout.parent_path());
  machine.Reports().Print(layout);
  EXPECT_THAT(machine.TakeLines(), ElementsAre("report \"devices_test.rpt\""));
  std::filesystem::remove(layout);
}

TEST_F(Devices, WhatIsOpenedForTheOperatorIsALine) {
  machine.Open("/op/Brenvo.html", 12);
  machine.Beep();
  EXPECT_THAT(machine.TakeLines(), ElementsAre("open \"Brenvo.html\"", "beep"));
  EXPECT_EQ(machine.OpenedTopic(), 12);
}

TEST_F(Devices, SettingsAreKeptBySectionAndKey) {
  EXPECT_EQ(machine.Settings().GetSetting("Log", "X", "120"), "120");
  machine.Settings().SaveSetting("Log", "X", "7");
  EXPECT_EQ(machine.Settings().GetSetting("Log", "X", "120"), "7");
  EXPECT_EQ(machine.Settings().GetSetting("Contest", "X", "120"), "120");
}

TEST_F(Devices, WorkInTheBackgroundIsDoneWhenSomebodyAsksForItsEnd) {
  int done = 0;
  const auto work = machine.RunInBackground([&](const std::stop_token&) { ++done; });
  const auto dropped = machine.RunInBackground([&](const std::stop_token&) { done += 10; });
  EXPECT_EQ(done, 0);
  EXPECT_TRUE(work->HasEnded());
  EXPECT_TRUE(work->HasEnded());
  EXPECT_EQ(done, 1);
}

TEST(RecordingPlatform, HandsItsLinesToItsOwner) {
  std::string heard;
  RecordingPlatform machine([&](std::string line) { heard = line; });
  machine.Beep();
  EXPECT_EQ(heard, "beep");
  EXPECT_THAT(machine.TakeLines(), IsEmpty());
}

TEST(AServiceOnTheNet, IsWrittenDownWithoutSecretsAndAnswersAsQueued) {
  recorder::RecordingPlatform machine;
  const auto web = machine.MakeWebClient();
  std::string body;
  std::vector<platform::WebEnd> ends;
  web->OnData = [&](std::string_view bytes) { body += bytes; };
  web->OnEnd = [&](const platform::WebEnd& end) { ends.push_back(end); };
  machine.Web().Queue({200, std::string(2500, 'x'), ""});
  web->Ask({platform::WebForm::kQuery,
            "https://host/path",
            {{"login", "ik0xyz"}, {"password", "", "LoTW ik0xyz"}}});
  EXPECT_EQ(body.size(), 2500U);
  ASSERT_EQ(ends.size(), 1U);
  EXPECT_EQ(ends[0].status, 200);
  EXPECT_EQ(ends[0].headers.at("date"), "Sat, 03 Feb 2001 03:05:06 GMT");
  web->Ask({platform::WebForm::kParts, "https://host/put", {{"file", "1234", "", "log.adi"}}});
  EXPECT_TRUE(web->IsAsking());
  machine.Web().Queue({0, "", "la risposta è troncata"});
  ASSERT_EQ(ends.size(), 2U);
  EXPECT_EQ(ends[1].failure, "la risposta è troncata");
  web->Ask({platform::WebForm::kQuery, "https://host/", {}});
  web->Stop();
  web->Forget("LoTW ik0xyz");
  EXPECT_THAT(
      machine.TakeLines(),
      testing::ElementsAre("http GET \"https://host/path?login=ik0xyz&password=(LoTW ik0xyz)\"",
                           "http POST \"https://host/put\" \"file=log.adi [4 byte]\"",
                           "http GET \"https://host/\"", "http-stop", "forget \"LoTW ik0xyz\""));
}

}  // namespace
}  // namespace brenvo::recorder
