// What a keystroke costs while a contact is typed: the log's own events, and the same questions
// asked by hand with statements compiled once. Every answer is compared.
#include <fmt/format.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"
#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/lookups_by_hand.h"
#include "core/prefix.h"
#include "log/log_form.h"
#include "tools/mklog/other_stations.h"

namespace brenvo::bench {
namespace {

constexpr int kEvents = 20000;
constexpr const char* kBand = "  2 m";

struct Typed {
  std::string call, locator, country;
};

// Half of them as in the log, half of stations never met.
std::vector<Typed> WhatIsTyped(BenchStation& station) {
  std::mt19937_64 random(1);
  const mklog::OtherStations strangers(station.file, 77);
  Hand contact(station.file, "SELECT Call,Locator,Country FROM Log WHERE QsoNr>=? LIMIT 1");
  std::vector<Typed> typed;
  while (typed.size() < kEvents) {
    if (typed.size() % 2 == 0) {
      const mklog::OtherStation other = strangers.Make(random() % 1'000'000);
      typed.push_back({other.call, other.locator, other.country});
      continue;
    }
    contact.Number(
        1, static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(station.contacts)) + 1);
    if (contact.Step()) typed.push_back({contact.Cell(0), contact.Cell(1), contact.Cell(2)});
    contact.Done();
    if (typed.back().locator.empty()) typed.back().locator = typed[typed.size() - 2].locator;
  }
  return typed;
}

// One event of the log after the other, and what answers them by hand.
class Typing {
 public:
  Typing(const Figures& figures, BenchStation& station)
      : figures_(figures),
        station_(station),
        log_(station.Open<log::LogForm>("LogForm")),
        typed_(WhatIsTyped(station)) {
    log_.cmClear.Press();
    log_.Banda.SetText(kBand);
  }

  void OnCallChange() {
    Measure("OnCallChange", 2, [&](const Typed& typed, const auto& measured) {
      measured([&] { log_.CallQso.SetText(typed.call); }, [&] { return hand_.Call(typed.call); });
    });
  }
  void OnLocatorChange() {
    Measure("OnLocatorChange", 4, [&](const Typed& typed, const auto& measured) {
      if (typed.locator == log_.Locator.Text()) return;
      measured([&] { log_.Locator.SetText(typed.locator); },
               [&] { return hand_.Square(typed.locator); });
    });
  }
  void OnCountryChange() {
    Measure("OnCountryChange", 3, [&](const Typed& typed, const auto& measured) {
      const std::string text = base::PadRight(typed.country, 5);
      if (text == log_.Country.Text()) return;
      measured([&] { log_.Country.SetText(text); }, [&] { return hand_.Country(typed.country); });
    });
  }
  void OnCallLeave() {
    Measure("OnCallLeave", 3, [&](const Typed& typed, const auto& measured) {
      const std::string prefix = core::PrefixCandidate(typed.call);
      // Where no prefix is known the country's panel tells of the empty one.
      if (core::ResolvePrefix(station_.session, typed.call).Prefisso.empty()) return;
      log_.CallQso.SetText(typed.call);
      if (log_.CallQso.Text() == log_.PrevCall) return;
      const bool shown = !log_.Country.Text().empty();
      measured([&] { log_.CallQso.Leave(); },
               [&] { return hand_.CallLeft(typed.call, prefix, shown); });
    });
  }

 private:
  template <class Event>
  void Measure(const char* name, int panel, Event event) {
    if (!figures_.Wants(name)) return;
    Samples program, byHand;
    const auto measured = [&](const auto& work, const auto& ask) {
      std::string answer;
      program.Measure(work);
      byHand.Measure([&] { answer = ask(); });
      if (answer == log_.StatusBar1.Panel(panel)) return;
      throw std::runtime_error(fmt::format("{}: the log says '{}', by hand it is '{}'", name,
                                           log_.StatusBar1.Panel(panel), answer));
    };
    for (const Typed& typed : typed_) event(typed, measured);
    figures_.Line(station_.contacts, name, program, byHand);
  }

  const Figures& figures_;
  BenchStation& station_;
  log::LogForm& log_;
  LookupsByHand hand_{station_.file, kBand, log_.QsoNr.Text()};
  std::vector<Typed> typed_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("keystroke", argc, argv);
  if (!figures.WantsAnyOf({"OnCallChange", "OnLocatorChange", "OnCountryChange", "OnCallLeave"})) {
    return 0;
  }
  for (const std::int64_t size : figures.Sizes()) {
    BenchStation station(size);
    Typing typing(figures, station);
    typing.OnCallChange();
    typing.OnLocatorChange();
    typing.OnCountryChange();
    typing.OnCallLeave();
  }
}
