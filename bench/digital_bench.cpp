// Decodes of a digital program: what one costs from its datagram to the cells of the window, with
// what it is worth, and a whole period of a hundred that come at once. Nothing is asked of the
// database for any of them. By hand: the same judged by statements compiled once.
#include <fmt/format.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "digital/digitale.h"

namespace brenvo::bench {
namespace {

constexpr int kDecodes = 100, kPeriods = 10;
constexpr std::int64_t kScreen = 40;  // rows
const platform::UdpAddress kFrom{"127.0.0.1", 50001};

std::string Bytes(const digital::Message& message) {
  digital::Datagram datagram;
  datagram.header.schema = 3;
  datagram.header.id = "WSJT-X";
  datagram.message = message;
  return digital::WriteDatagram(datagram);
}

struct Station {
  std::string call, country, square;
};

// Calls, half of them from the log, each in a message of its own.
std::vector<std::string> Messages(const std::vector<Station>& stations) {
  std::vector<std::string> bytes;
  std::uint32_t time = 0;
  for (const Station& each : stations) {
    digital::Decode decode;
    decode.time = time += 15;
    decode.df = 1000;
    decode.mode = "~";
    decode.message = fmt::format("CQ {} {}", each.call, each.square);
    bytes.push_back(Bytes(decode));
  }
  return bytes;
}

void Run(const Figures& figures, std::int64_t contacts) {
  if (!figures.WantsAnyOf({"a decode", "a period"})) return;
  BenchStation station(contacts);
  station.frame->Worked->WaitUntilRead();
  auto& window = station.Open<digital::Digitale>("Digitale");
  std::vector<Station> stations;
  {
    Hand rows(station.file, fmt::format("SELECT Call,Country,substr(Locator,1,4) FROM Log WHERE "
                                        "QsoNr%{}=0 LIMIT {}",
                                        std::max<std::int64_t>(contacts / 2000, 1), 2000));
    while (rows.Step()) stations.push_back({rows.Cell(0), rows.Cell(1), rows.Cell(2)});
  }
  if (stations.empty()) return;
  const std::size_t inLog = stations.size();
  std::mt19937_64 random(1);
  while (stations.size() < kDecodes * kPeriods * 3) {
    Station next = stations[random() % inLog];
    if (stations.size() % 2 == 0) next.call += "/P";
    stations.push_back(next);
  }
  const std::vector<std::string> messages = Messages(stations);
  const auto hear = [&](const std::vector<platform::UdpDatagram>& datagrams) {
    station.session.Windows.RunEvent([&] { station.machine.Udp().ReceiveAll("WSJTX", datagrams); });
    for (std::int64_t row = 1; row <= std::min(kScreen, window.Decodifiche.Rows() - 1); ++row) {
      for (int i = 0; i < window.Decodifiche.Columns(); ++i) window.Decodifiche.Cell(row, i);
      window.Decodifiche.BackColour(row, 0);
    }
  };
  hear({{kFrom, Bytes(digital::Status{.dial = 14074000, .mode = "FT8", .deCall = "IK3ABC"})}});
  std::size_t at = 0;
  // The table is full before anything is measured; the clock goes on, or it would be a flood.
  const auto next = [&] {
    const platform::UdpDatagram datagram{kFrom, messages[at % messages.size()]};
    if (++at % kDecodes == 0) station.machine.Advance(1000);
    return datagram;
  };
  for (int i = 0; i < kDecodes * kPeriods; ++i) hear({next()});

  Samples single;
  for (int i = 0; i < kDecodes * kPeriods; ++i) {
    const platform::UdpDatagram datagram = next();
    single.Measure([&] { hear({datagram}); });
  }
  Samples byHand;
  {
    Hand country(station.file,
                 "SELECT 1 FROM Log WHERE rtrim(Country) COLLATE NOCASE = rtrim(?) AND "
                 "rtrim(Banda) COLLATE NOCASE = ' 20 m' LIMIT 1");
    Hand square(station.file,
                "SELECT 1 FROM Log WHERE rtrim(substr(Locator,1,4)) COLLATE NOCASE = rtrim(?) AND "
                "rtrim(Banda) COLLATE NOCASE = ' 20 m' LIMIT 1");
    for (int i = 0; i < 20; ++i) {
      const Station& each = stations[random() % inLog];
      byHand.Measure([&] {
        country.Finds({each.country});
        square.Finds({each.square});
      });
    }
  }
  figures.Line(contacts, "a decode, from its datagram to the cells", single, byHand);
  Samples period;
  for (int i = 0; i < kPeriods; ++i) {
    std::vector<platform::UdpDatagram> burst;
    for (int k = 0; k < kDecodes; ++k) burst.push_back(next());
    period.Measure([&] { hear(burst); });
  }
  figures.Line(contacts, "a period of 100 decodes in one event", period, {});
  station.Close(window);
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("digital", argc, argv);
  for (const std::int64_t size : figures.Sizes()) Run(figures, size);
}
