// A station with a transceiver and a rotator that answer as the real programs do.
#pragma once

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "rig/modelli.h"
#include "rig/rtx.h"
#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::rig {

using Texts = std::vector<std::string>;

// What a program at the other end of a line holds, and how it answers.
struct FarEnd {
  double frequency = 14250000;
  std::string mode = "USB";
  std::string split = "0";
  double sends = 14255000;
  int strength = -6;
  bool namesVfo = false;
  std::map<std::string, int> codes;  // of commands that fail
  double azimuth = 10, minAzimuth = 0, maxAzimuth = 450;

  std::string Answer(const std::string& request) {
    if (request == "\\chk_vfo") return namesVfo ? "1\n" : "0\n";
    std::string rest = request.substr(2);
    const std::string name = rest.substr(0, rest.find(' '));
    std::string arguments = rest.size() > name.size() ? rest.substr(name.size() + 1) : "";
    std::string answer = fmt::format("{}:{}{}\n", name, arguments.empty() ? "" : " ", arguments);
    if (const auto code = codes.find(name); code != codes.end()) {
      return fmt::format("{}RPRT {}\n", answer, code->second);
    }
    if (name == "get_freq") answer += fmt::format("Frequency: {:.0f}\n", frequency);
    if (name == "get_mode") answer += fmt::format("Mode: {}\nPassband: 2400\n", mode);
    if (name == "get_split_vfo") answer += fmt::format("Split: {}\nTX VFO: VFOB\n", split);
    if (name == "get_split_freq") answer += fmt::format("TX Frequency: {:.0f}\n", sends);
    if (name == "get_level") answer += fmt::format("{}\n", strength);
    if (name == "set_freq") frequency = std::stod(arguments);
    if (name == "set_mode") mode = arguments.substr(0, arguments.find(' '));
    if (name == "dump_state") {
      answer += fmt::format(
          "rotctld Protocol Ver: 1\nMinimum Azimuth: {:.6f}\nMaximum Azimuth: {:.6f}\ndone\n",
          minAzimuth, maxAzimuth);
    }
    if (name == "get_pos") answer += fmt::format("Azimuth: {:.2f}\nElevation: 0.00\n", azimuth);
    return answer + "RPRT 0\n";
  }
};

class RigStation : public StationTest {
 protected:
  RigStation() {
    session.SaveSetting("Rtx", "Dove", "altro");
    session.SaveSetting("Rotore", "Dove", "altro");
    session.Windows.Register(
        "Rtx", [this] { return std::make_unique<Rtx>(session, *transceiver, *rotator, *server); });
    Know<Modelli>("Modelli");
    Begin();
  }
  ~RigStation() override { End(); }

  void Begin() {
    transceiver = std::make_unique<Transceiver>(session);
    rotator = std::make_unique<Rotator>(session);
    server = std::make_unique<RigServer>(session, *transceiver);
    transceiver->Start();
    rotator->Start();
    server->Start();
  }
  void End() {
    if (forms::Window* open = session.Windows.Find("Rtx")) session.Windows.Unload(*open);
    server.reset();
    rotator.reset();
    transceiver.reset();
  }

  // What went over both lines is answered until nothing more is asked; the requests, in their
  // order.
  Texts Talk() {
    Texts asked;
    for (Texts lines = Lines(); !lines.empty(); lines = Lines()) {
      for (const std::string& line : lines) {
        for (const auto& [name, far] :
             {std::pair<std::string, FarEnd*>("RIG", &rig), {"ROTOR", &rotor}}) {
          const std::string mark = "sent " + name + " \"";
          if (!line.starts_with(mark)) continue;
          std::string request = line.substr(mark.size(), line.size() - mark.size() - 3);
          for (std::size_t at = request.find("\\\\"); at != request.npos;
               at = request.find("\\\\", at + 1)) {
            request.erase(at, 1);
          }
          asked.push_back(request);
          if (machine.Tcp().IsConnected(name)) Receive(name, far->Answer(request));
        }
        if (!line.starts_with("sent ")) other.push_back(line);
      }
    }
    return asked;
  }
  void Receive(const std::string& name, const std::string& bytes) {
    Event([&] { machine.Tcp().Receive(name, bytes); });
  }
  Texts After(int milliseconds) {
    Event([&] { machine.Advance(milliseconds); });
    return Talk();
  }
  Rtx& OpenRtx() {
    Rtx& window = Open<Rtx>("Rtx");
    Talk();
    return window;
  }

  std::unique_ptr<Transceiver> transceiver;
  std::unique_ptr<Rotator> rotator;
  std::unique_ptr<RigServer> server;
  FarEnd rig, rotor;
  Texts other;  // the lines that were no sendings
};

}  // namespace brenvo::rig
