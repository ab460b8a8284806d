// A station that programs of digital modes tell of what they do.
#pragma once

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "digital/digitale.h"
#include "tests/digital/vectors.h"
#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::digital {

using Texts = std::vector<std::string>;

class DigitalStation : public StationTest {
 protected:
  explicit DigitalStation(bool start = true) {
    session.Db.Execute("UPDATE [User] SET Call='IK3ABC'");
    session.Windows.Register("Digitale",
                             [this] { return std::make_unique<Digitale>(session, *programs); });
    frame->Worked->WaitUntilRead();
    if (start) Start();
  }
  ~DigitalStation() override {
    if (frame->Loaded()) frame->Services.clear();
  }
  // As at the start of the program; what was at work before is gone.
  void Start() {
    frame->Services.clear();
    const auto made = std::make_shared<Programs>(session, *frame->Worked);
    frame->Services.push_back(made);
    programs = made.get();
    programs->Start();
    programs->WindowOpened(true);
    machine.TakeLines();
  }
  void Receive(std::string_view bytes, const platform::UdpAddress& from = kFrom) {
    Event([&] { machine.Udp().Receive("WSJTX", from, bytes); });
  }
  void ReceiveVector(std::string_view name) { Receive(Vector(name)); }
  void ReceiveAdif(std::string_view bytes) {
    Event([&] { machine.Udp().Receive("ADIF", kRelay, bytes); });
  }
  void Send(const Message& message, std::string id = "WSJT-X") {
    Receive(WriteDatagram({{3, std::move(id)}, message}));
  }
  void Advance(int milliseconds) {
    Event([&] { machine.Advance(milliseconds); });
  }
  static std::string Line(const Message& message, std::string id = "WSJT-X") {
    std::string line = "datagram WSJTX 127.0.0.1:50001 ";
    for (const char c : WriteDatagram({{3, std::move(id)}, message})) {
      line += fmt::format("{:02X}", static_cast<unsigned char>(c));
    }
    return line;
  }
  Texts Contacts() {
    return Rows(
        "Select DataQso,Call,Banda,Modo,QrkDato,QrkRicevuto,Qra,Locator,Country,Qrb,Note from Log "
        "Order By DataQso");
  }
  std::int64_t ContactCount() {
    return session.Db.OpenSnapshot("Select Count(*) from Log")->Field(std::size_t{0}).Integer();
  }

  static inline const platform::UdpAddress kFrom{"127.0.0.1", 50001}, kRelay{"127.0.0.1", 60001};
  Programs* programs = nullptr;
};

}  // namespace brenvo::digital
