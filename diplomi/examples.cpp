#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "core/note_tag.h"
#include "diplomi/count.h"
#include "judge.h"

namespace brenvo::diplomi {
namespace {

std::string_view ModeOf(const ExampleContact& contact, const worked::Rules& rules) {
  if (!rules.MeaningOf(contact.mode).satellite) return contact.mode;
  return core::ParseSatelliteNote(contact.note).mode;
}

class Tried {
 public:
  Tried(const Award& award, const worked::Rules& rules, const World& world)
      : award_(award), rules_(rules), world_(world) {}

  std::vector<AwardFault> Faults() {
    for (std::size_t i = 0; i < award_.counting.size(); ++i) {
      if (!ServiceOf(award_.counting[i].service)) {
        Fail(0, fmt::format("conferme[{}].servizio", i + 1),
             fmt::format("\"{}\" non c'è fra le conferme di {}", award_.counting[i].service,
                         worked::kDeliveredRules));
      }
    }
    for (const std::string& mode : award_.modes) {
      if (!rules_.FindGroup(mode)) {
        Fail(0, "modi", fmt::format("\"{}\" non è un gruppo di modi", mode));
      }
    }
    if (!faults_.empty()) return std::move(faults_);
    for (std::size_t i = 0; i < award_.examples.size(); ++i) {
      Try(award_.examples[i], fmt::format("esempi[{}]", i + 1));
    }
    return std::move(faults_);
  }

 private:
  void Fail(int line, std::string field, std::string what) {
    faults_.push_back({line, std::move(field), std::move(what)});
  }
  std::optional<std::size_t> ServiceOf(std::string_view name) const {
    const auto& names = rules_.Services();
    const auto at = std::ranges::find_if(
        names, [&](const std::string& each) { return base::SameText(each, name); });
    if (at == names.end()) return std::nullopt;
    return static_cast<std::size_t>(at - names.begin());
  }

  void Add(LogImage& log, const ExampleContact& contact, std::int64_t key,
           const std::string& path) {
    SeenContact seen;
    seen.key = key;
    seen.utc = contact.utc;
    seen.call = contact.call;
    seen.country = contact.country;
    seen.continent = contact.continent;
    seen.area = contact.area;
    seen.province = contact.province;
    seen.locator = contact.locator;
    seen.band = contact.band;
    seen.propagation = contact.propagation;
    seen.zoneCq = contact.zoneCq;
    seen.station = contact.station;
    seen.group = rules_.MeaningOf(ModeOf(contact, rules_)).group;
    seen.satellite =
        rules_.MeaningOf(contact.mode).satellite || rules_.IsSatellite(contact.propagation);
    for (const std::string& name : contact.services) {
      const auto service = ServiceOf(name);
      if (!service) {
        Fail(contact.line, path + ".confermato da", fmt::format("\"{}\" non c'è", name));
        continue;
      }
      seen.services |= static_cast<worked::ServiceSet>(1U << *service);
    }
    std::vector<Beside> beside;
    const auto put = [&](std::size_t what, std::string_view text) {
      if (!text.empty()) beside.push_back({static_cast<std::uint16_t>(what), log.texts.Of(text)});
    };
    for (const auto& [field, value] : contact.fields) {
      if (const auto at = log.FieldAt(field)) put(*at, value);
    }
    if (const auto at = log.FieldAt(kNoteField)) put(*at, contact.note);
    for (const ExampleRecord& record : contact.records) {
      const auto service = ServiceOf(record.service);
      if (!service) {
        Fail(contact.line, path + ".record", fmt::format("\"{}\" non c'è", record.service));
        continue;
      }
      put(kRecordLocator + *service, record.locator);
      put(kRecordIota + *service, record.iota);
    }
    seen.beside = beside;
    log.Add(seen);
  }

  void Try(const Example& example, const std::string& path) {
    LogImage log(WantedFields(std::span(&award_, 1)));
    std::int64_t key = 0;
    for (const ExampleContact& contact : example.contacts) {
      ++key;
      Add(log, contact, key, fmt::format("{}.qso[{}]", path, key));
    }
    std::vector<OwnPlace> places;
    for (const std::string& locator : example.stations) {
      places.push_back({std::ssize(places) + 1, "", locator});
    }
    if (places.empty()) places.push_back({1, "", ""});
    Choice choice;
    choice.mode = example.mode;
    const Counted counted = Count(award_, log, world_, places, rules_, choice);
    const Totals& all = counted.totals.front();
    const auto expect = [&](std::string_view name, int is, int wanted) {
      if (is == wanted) return;
      Fail(example.line, fmt::format("{}.{}", path, name),
           fmt::format("ne vengono {}, non {}", is, wanted));
    };
    expect("lavorati", all.worked, example.worked);
    expect("confermati", all.confirmed, example.confirmed);
    expect("accreditati", all.credited, example.credited);
    for (const ExampleUnit& wanted : example.units) {
      const State state = StateOf(counted, wanted);
      if (NameOf(state) == wanted.state) continue;
      Fail(wanted.line, path + ".conta",
           fmt::format("{}{} è {}, non {}", wanted.unit,
                       wanted.band.empty() ? "" : " in " + wanted.band,
                       state == State::kNone ? "da lavorare" : NameOf(state), wanted.state));
    }
  }

  static State StateOf(const Counted& counted, const ExampleUnit& wanted) {
    const auto unit = std::ranges::find(counted.units, base::UpperAscii(wanted.unit), &Unit::code);
    if (unit == counted.units.end()) return State::kNone;
    std::size_t column = 0;
    if (!wanted.band.empty()) {
      const auto band = std::ranges::find(counted.bands, wanted.band);
      if (band == counted.bands.end()) return State::kNone;
      column = static_cast<std::size_t>(band - counted.bands.begin()) + 1;
    }
    return counted.At(static_cast<std::size_t>(unit - counted.units.begin()), column).state;
  }

  const Award& award_;
  const worked::Rules& rules_;
  const World& world_;
  std::vector<AwardFault> faults_;
};

}  // namespace

std::vector<AwardFault> FailedExamples(const Award& award, const worked::Rules& rules,
                                       const World& world) {
  return Tried(award, rules, world).Faults();
}

}  // namespace brenvo::diplomi
