#include "core/preferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/match.h"
#include "base/text.h"
#include "core/network_address.h"
#include "core/session.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kYes = "Sì", kNo = "No";

constexpr const Choice* kAll[] = {&choice::kClocks,
                                  &choice::kSeconds,
                                  &choice::kZone,
                                  &choice::kKeepsLink,
                                  &choice::kReportsByMode,
                                  &choice::kStatusByBand,
                                  &choice::kTimesOfQso,
                                  &choice::kEnterStores,
                                  &choice::kUtcInLog,
                                  &choice::kHistoryDays,
                                  &choice::kHistoryContacts,
                                  &choice::kDigitalListens,
                                  &choice::kDigitalAddress,
                                  &choice::kDigitalPort,
                                  &choice::kDigitalAdifPort,
                                  &choice::kDigitalGroup,
                                  &choice::kDigitalInterfaces,
                                  &choice::kDigitalForwards,
                                  &choice::kDigitalNeeds,
                                  &choice::kDigitalColours,
                                  &choice::kDigitalSound,
                                  &choice::kDigitalContest,
                                  &choice::kLotwGivesBox,
                                  &choice::kEqslGivesBox,
                                  &choice::kQrzGivesBox,
                                  &choice::kClubLogGivesBox,
                                  &choice::kLotwUser,
                                  &choice::kEqslUser,
                                  &choice::kClubLogUser,
                                  &choice::kContestSends,
                                  &choice::kCwAddress,
                                  &choice::kCwPort,
                                  &choice::kCwSpeed,
                                  &choice::kSendingLimit,
                                  &choice::kContestKeys[0],
                                  &choice::kContestKeys[1],
                                  &choice::kContestKeys[2],
                                  &choice::kContestKeys[3],
                                  &choice::kContestKeys[4],
                                  &choice::kContestKeys[5],
                                  &choice::kContestKeys[6],
                                  &choice::kContestKeys[7],
                                  &choice::kRigConnects,
                                  &choice::kRigInLog,
                                  &choice::kRigInContest,
                                  &choice::kRigServes,
                                  &choice::kRigServesPort,
                                  &choice::kRotorConnects};

// Blanks around it do not count.
std::optional<int> ReadNumber(std::string_view text, const NumberKind& kind) {
  const std::string trimmed = base::Trim(text);
  int number = 0;
  const char* const end = trimmed.data() + trimmed.size();
  const auto [at, error] = std::from_chars(trimmed.data(), end, number);
  if (error != std::errc() || at != end || number < kind.least || number > kind.most) {
    return std::nullopt;
  }
  return number;
}

std::optional<bool> ReadYesNo(std::string_view text) {
  const std::string word = base::Lower(base::Trim(text));
  if (word == "sì" || word == "si" || word == "s" || word == "y") return true;
  if (word == "no" || word == "n") return false;
  return std::nullopt;
}

}  // namespace

std::string choice::FaultOfZone(Session& session, std::string_view zone) {
  if (session.Machine.GetClock().KnowsZone(zone)) return {};
  return "questo computer non conosce il fuso orario";
}

std::string choice::FaultOfAddress(Session&, std::string_view address) {
  return IsAddress(address) ? "" : "un indirizzo è fatto di quattro numeri, come 127.0.0.1";
}

std::string choice::FaultOfGroup(Session&, std::string_view group) {
  if (group.empty() || IsGroupAddress(group)) return {};
  return "un gruppo è un indirizzo da 224.0.0.0 a 239.255.255.255";
}

std::string choice::FaultOfForwards(Session&, std::string_view targets) {
  const std::string fault = FaultOfTargets(targets);
  return fault.empty() ? "" : fmt::format("{} non è un indirizzo e una porta", fault);
}

std::string choice::FaultOfNeeds(Session& session, std::string_view needs) {
  const auto& fault = session.Choices.FaultOfNeeds;
  // Nothing is the standard.
  return needs.empty() || !fault ? std::string() : fault(needs);
}

std::span<const Choice* const> AllChoices() { return kAll; }

std::string Preferences::Stored(const Choice& choice) const {
  return session_.GetSetting(choice.section, choice.key, "");
}

bool Preferences::IsOn(const Choice& choice) const {
  const std::string stored = Stored(choice);
  if (stored == "Y" || stored == "N") return stored == "Y";
  return std::get<YesNoKind>(choice.kind).standard;
}

int Preferences::NumberOf(const Choice& choice) const {
  const auto& kind = std::get<NumberKind>(choice.kind);
  return ReadNumber(Stored(choice), kind).value_or(kind.standard);
}

std::string Preferences::Text(const Choice& choice) const {
  return std::visit(
      base::Match{[&](const YesNoKind&) { return std::string(IsOn(choice) ? kYes : kNo); },
                  [&](const NumberKind&) { return std::to_string(NumberOf(choice)); },
                  [&](const TextKind& kind) {
                    const std::string stored = Stored(choice);
                    const bool fits = kind.fault == nullptr || kind.fault(session_, stored).empty();
                    return stored.empty() || !fits ? std::string(kind.standard) : stored;
                  },
                  [&](const WordKind& kind) {
                    const std::string stored = Stored(choice);
                    const auto at = std::find(kind.words.begin(), kind.words.end(), stored);
                    return at == kind.words.end() ? std::string(kind.words.front()) : stored;
                  }},
      choice.kind);
}

std::string Preferences::StandardText(const Choice& choice) {
  return std::visit(
      base::Match{[](const YesNoKind& kind) { return std::string(kind.standard ? kYes : kNo); },
                  [](const NumberKind& kind) { return std::to_string(kind.standard); },
                  [](const TextKind& kind) { return std::string(kind.standard); },
                  [](const WordKind& kind) { return std::string(kind.words.front()); }},
      choice.kind);
}

std::string Preferences::Range(const Choice& choice) {
  return std::visit(base::Match{[](const YesNoKind&) { return fmt::format("{} o {}", kYes, kNo); },
                                [](const NumberKind& kind) {
                                  return fmt::format("un numero da {} a {}", kind.least, kind.most);
                                },
                                [](const TextKind&) { return std::string("un testo"); },
                                [](const WordKind& kind) {
                                  return fmt::format("una di queste: {}",
                                                     fmt::join(kind.words, ", "));
                                }},
                    choice.kind);
}

std::string Preferences::Set(const Choice& choice, std::string_view text) {
  std::string stored, fault;
  std::visit(base::Match{[&](const YesNoKind&) {
                           if (const auto on = ReadYesNo(text)) stored = *on ? "Y" : "N";
                         },
                         [&](const NumberKind& kind) {
                           if (const auto number = ReadNumber(text, kind)) {
                             stored = std::to_string(*number);
                           }
                         },
                         [&](const TextKind& kind) {
                           stored = base::Trim(text);
                           if (kind.fault != nullptr) fault = kind.fault(session_, stored);
                         },
                         [&](const WordKind& kind) {
                           for (const std::string_view word : kind.words) {
                             if (base::Lower(word) == base::Lower(base::Trim(text))) stored = word;
                           }
                         }},
             choice.kind);
  if (!fault.empty()) return fault;
  if (stored.empty() && !std::holds_alternative<TextKind>(choice.kind)) return Range(choice);
  const std::string before = Text(choice);
  session_.SaveSetting(choice.section, choice.key, stored);
  if (Text(choice) != before) Changed(choice);
  return {};
}

}  // namespace brenvo::core
