#include "digital/needs.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "words.h"

namespace brenvo::digital {
namespace {

using worked::Kind;

// What a decode can tell of a station; the longest name first where one begins another.
constexpr Kind kKinds[] = {Kind::kCountry,  Kind::kZonaCQ,    Kind::kZonaITU, Kind::kContinente,
                           Kind::kPrefisso, Kind::kProvincia, Kind::kSquare,  Kind::kCall};

std::string KindNames() {
  std::string names;
  for (const Kind kind : kKinds) {
    names += (names.empty() ? "" : ", ") + std::string(worked::NameOf(kind));
  }
  return names;
}

// False when the words name nothing; `words` are then without the name.
bool TakeKind(std::string& words, Kind& kind) {
  const std::string small = base::Lower(words);
  for (const Kind each : kKinds) {
    const std::string name = base::Lower(worked::NameOf(each));
    if (!small.starts_with(name)) continue;
    if (small.size() > name.size() && small[name.size()] != ' ') continue;
    kind = each;
    words.erase(0, name.size());
    return true;
  }
  return false;
}

// Empty when it was understood.
std::string Take(std::string_view text, Need& need) {
  std::string words = base::Trim(text);
  if (words.ends_with('!')) {
    need.sounds = true;
    words = base::RTrim(std::string_view(words).substr(0, words.size() - 1));
  }
  if (!TakeKind(words, need.kind)) {
    return fmt::format("\"{}\" non comincia con uno di questi: {}", base::Trim(text), KindNames());
  }
  for (const std::string_view word : WordsOf(words)) {
    if (base::SameText(word, "banda")) {
      need.onBand = true;
    } else if (base::SameText(word, "modo")) {
      need.inMode = true;
    } else if (base::SameText(word, "conferma")) {
      need.confirmed = true;
    } else {
      return fmt::format("\"{}\" non è banda, modo o conferma", word);
    }
  }
  need.words = std::string(worked::NameOf(need.kind)) + (need.onBand ? " banda" : "") +
               (need.inMode ? " modo" : "") + (need.confirmed ? " conferma" : "");
  return {};
}

worked::Subject SubjectOf(Kind kind, const Heard& heard) {
  using worked::Subject;
  switch (kind) {
    case Kind::kPrefisso:
      return Subject::Prefisso(heard.prefisso);
    case Kind::kCountry:
      return Subject::Country(heard.country);
    case Kind::kZonaCQ:
      return Subject::ZonaCQ(heard.zonaCQ);
    case Kind::kZonaITU:
      return Subject::ZonaITU(heard.zonaITU);
    case Kind::kContinente:
      return Subject::Continente(heard.continente);
    case Kind::kProvincia:
      return Subject::Provincia(heard.country, heard.provincia);
    case Kind::kSquare:
      return Subject::Square(heard.locator);
    case Kind::kCall:
    case Kind::kSquare6:
      break;
  }
  return Subject::Call(heard.call);
}

bool IsKnown(Kind kind, const Heard& heard) {
  switch (kind) {
    case Kind::kPrefisso:
      return !heard.prefisso.empty();
    case Kind::kCountry:
      return !heard.country.empty();
    case Kind::kZonaCQ:
      return heard.zonaCQ > 0;
    case Kind::kZonaITU:
      return heard.zonaITU > 0;
    case Kind::kContinente:
      return !heard.continente.empty();
    case Kind::kProvincia:
      return !heard.country.empty() && !heard.provincia.empty();
    case Kind::kSquare:
      return heard.locator.size() >= 4;
    case Kind::kCall:
    case Kind::kSquare6:
      break;
  }
  return !heard.call.empty();
}

}  // namespace

ParsedNeeds ParseNeeds(std::string_view text) {
  ParsedNeeds parsed;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string_view each = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (base::Trim(each).empty()) continue;
    Need need;
    parsed.fault = Take(each, need);
    if (!parsed.fault.empty()) return parsed;
    parsed.needs.push_back(std::move(need));
  }
  if (parsed.needs.empty()) parsed.fault = "manca almeno un bisogno";
  if (parsed.needs.size() > kMostNeeds) {
    parsed.fault = fmt::format("più di {} bisogni", kMostNeeds);
  }
  return parsed;
}

std::optional<std::size_t> FirstNeed(const std::vector<Need>& needs,
                                     const worked::WorkedIndex& index, const Heard& heard) {
  for (std::size_t i = 0; i < needs.size(); ++i) {
    const Need& need = needs[i];
    if (!IsKnown(need.kind, heard)) continue;
    worked::Filter filter;
    if (need.onBand) {
      if (heard.banda.empty()) continue;
      filter.band = heard.banda;
    }
    if (need.inMode) {
      const worked::Group group = index.TheRules().MeaningOf(heard.modo).group;
      if (group == worked::kNoGroup) continue;
      filter.group = group;
    }
    const worked::State state = index.Ask(SubjectOf(need.kind, heard), filter).state;
    const bool meets =
        need.confirmed ? state != worked::State::kConfirmed : state == worked::State::kNew;
    if (meets) return i;
  }
  return std::nullopt;
}

}  // namespace brenvo::digital
