// The slow way: for each contact all that stand before it are looked at again. It shares with the
// fast one what a single contact is worth by the rule, and nothing of the counting.
#include <fmt/format.h>

#include <algorithm>

#include "core/call_forms.h"
#include "gara/count.h"
#include "worth.h"

namespace brenvo::gara {
namespace {

bool Together(Per per, const Contact& a, const Contact& b) {
  switch (per) {
    case Per::kContest:
      return true;
    case Per::kBand:
      return a.band == b.band;
    case Per::kBandAndMode:
      return a.band == b.band && ModeFamily(a.mode) == ModeFamily(b.mode);
  }
  return false;
}

std::string JoinTexts(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : " ") + text;
  return all.empty() ? "nessuno" : all;
}

}  // namespace

Recounted Recount(const Rule& rule, const OwnEntry& own, std::span<const Contact> contacts) {
  Recounted result;
  std::vector<std::string> calls;
  calls.reserve(contacts.size());
  std::vector<std::vector<std::string>> values(rule.multipliers.size());
  for (const Contact& each : contacts) {
    calls.push_back(core::BaseCall(each.call));
    for (std::size_t m = 0; m < values.size(); ++m) {
      values[m].push_back(MultiplierOf(rule.multipliers[m], each));
    }
  }
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    const Contact& contact = contacts[i];
    Worth worth;
    for (std::size_t j = 0; j < i && !worth.duplicateOf; ++j) {
      if (calls[j] == calls[i] && Together(rule.duplicates, contacts[j], contact)) {
        worth.duplicateOf = j;
      }
    }
    if (!worth.duplicateOf) {
      worth.points = PointsOf(rule, own, contact);
      for (std::size_t m = 0; m < values.size(); ++m) {
        const std::string& value = values[m][i];
        bool isNew = !value.empty();
        for (std::size_t j = 0; j < i && isNew; ++j) {
          isNew = values[m][j] != value || result.worths[j].duplicateOf.has_value() ||
                  !Together(rule.multipliers[m].per, contacts[j], contact);
        }
        if (isNew) worth.multipliers.push_back(value);
      }
    }
    result.worths.push_back(std::move(worth));
  }
  std::vector<std::string> bands = rule.bands;
  for (const Contact& each : contacts) {
    if (std::ranges::find(bands, each.band) == bands.end()) bands.push_back(each.band);
  }
  Score& score = result.score;
  std::int64_t perBand = 0;
  for (const std::string& band : bands) {
    BandScore sum{band, 0, 0, 0, 0};
    for (std::size_t i = 0; i < contacts.size(); ++i) {
      if (contacts[i].band != band) continue;
      const Worth& worth = result.worths[i];
      sum.contacts += 1;
      sum.duplicates += worth.duplicateOf ? 1 : 0;
      sum.points += worth.points;
      sum.multipliers += std::ssize(worth.multipliers);
    }
    if (sum.contacts == 0) continue;
    score.contacts += sum.contacts;
    score.duplicates += sum.duplicates;
    score.points += sum.points;
    score.multipliers += sum.multipliers;
    perBand += sum.points * sum.multipliers;
    score.bands.push_back(std::move(sum));
  }
  if (rule.multipliers.empty()) {
    score.total = score.points;
  } else {
    score.total = rule.scorePerBand ? perBand : score.points * score.multipliers;
  }
  return result;
}

std::vector<RuleFault> FailedExamples(const Rule& rule) {
  std::vector<RuleFault> failed;
  for (const Example& example : rule.examples) {
    const OwnEntry own{
        example.call, example.locator, example.exchange, {example.country, example.continent}};
    std::vector<Contact> contacts;
    for (const ExampleContact& each : example.contacts) {
      Contact contact;
      contact.band = each.band;
      contact.call = each.call;
      contact.mode = each.mode;
      contact.locator = each.locator;
      contact.exchange = each.exchange;
      contact.place = {each.country, each.continent};
      contacts.push_back(std::move(contact));
    }
    Count count(rule, own);
    count.Reset(contacts);
    const auto differs = [&](int line, std::string_view what, const auto& told, const auto& found) {
      if (told != found) {
        failed.push_back(
            {line, "esempi", fmt::format("{}: scritto {}, dalle regole {}", what, told, found)});
      }
    };
    for (std::size_t i = 0; i < contacts.size(); ++i) {
      const ExampleContact& told = example.contacts[i];
      const Worth& worth = count.Worths()[i];
      differs(told.line, told.call + ", punti", told.points, worth.points);
      differs(told.line, told.call + ", moltiplicatori", JoinTexts(told.multipliers),
              JoinTexts(worth.multipliers));
      differs(told.line, told.call + ", doppio", told.isDuplicate, worth.duplicateOf.has_value());
    }
    const Score score = count.Total();
    differs(example.line, "punti", example.points, score.points);
    differs(example.line, "moltiplicatori", example.multipliers, score.multipliers);
    differs(example.line, "punteggio", example.score, score.total);
    if (!(Recount(rule, own, contacts).score == score)) {
      failed.push_back({example.line, "esempi", "il secondo conteggio dà un altro punteggio"});
    }
  }
  return failed;
}

}  // namespace brenvo::gara
