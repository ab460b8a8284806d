#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <stdexcept>

#include "base/csv.h"
#include "base/text.h"
#include "diplomi/award.h"

namespace brenvo::diplomi {
namespace {

using base::Word;
using Fields = base::JsonFields;

constexpr Word<UnitKind> kUnits[] = {
    {"country", UnitKind::kCountry},      {"country WAE", UnitKind::kWaeCountry},
    {"zona CQ", UnitKind::kCqZone},       {"continente", UnitKind::kContinent},
    {"prefisso", UnitKind::kPrefix},      {"provincia", UnitKind::kProvince},
    {"quadrato", UnitKind::kSquare},      {"campo", UnitKind::kField},
    {"riferimento", UnitKind::kReference}};
constexpr Word<Satellite> kSatellites[] = {
    {"no", Satellite::kNo}, {"solo", Satellite::kOnly}, {"sì", Satellite::kAny}};
constexpr Word<LevelOf> kLevels[] = {
    {"tutto", LevelOf::kAll}, {"banda", LevelOf::kBand}, {"caselle", LevelOf::kSlots}};
constexpr std::string_view kStates[] = {"lavorato", "confermato", "accreditato"};
constexpr int kMostCount = 1'000'000;

template <class Read>
void EachOf(Fields& fields, std::string_view name, bool mustBe, const Read& read) {
  base::EachObject<Fields>(fields, name, mustBe, read);
}

std::optional<base::DateTime> DayOf(Fields& fields, std::string_view name) {
  const std::string text = fields.Text(name, false);
  if (text.empty()) return std::nullopt;
  const auto day = text.size() == 10 ? base::ParseIso(text) : std::nullopt;
  if (!day) fields.FaultAt(name, "la data si scrive come 1948-06-02");
  return day;
}

// "campo": "testo" for each member.
std::map<std::string, std::string> TextsByName(Fields& fields, std::string_view name) {
  std::map<std::string, std::string> texts;
  const base::Json* const at = fields.Find(name);
  if (at == nullptr) return texts;
  if (at->kind != base::Json::Kind::kObject) {
    fields.FaultAt(name, "qui ci vuole { ... }");
    return texts;
  }
  for (const auto& [key, value] : at->members) {
    if (value.kind != base::Json::Kind::kText) {
      fields.Fault(value.line, fields.PathOf(name) + '.' + key, "ci vuole un testo fra virgolette");
      continue;
    }
    texts[base::UpperAscii(base::Trim(key))] = base::Trim(value.text);
  }
  return texts;
}

void ReadUnit(Fields& fields, Award& award) {
  award.unit = fields.OneOf("unità", kUnits, UnitKind::kCountry);
  const UnitKind unit = award.unit;
  const auto only = [&](std::string_view name, bool fits, bool mustBe) {
    if (fits && mustBe && !fields.Has(name)) fields.FaultAt(name, "manca");
    if (!fits && fields.Has(name)) fields.FaultAt(name, "con questa unità non serve");
    return fits;
  };
  if (only("country", unit == UnitKind::kProvince, true)) {
    award.countries = fields.Texts("country");
  }
  if (only("aree", unit == UnitKind::kWaeCountry, false)) {
    EachOf(fields, "aree", false, [&](Fields& one) {
      award.areas.push_back(
          {one.Text("area"), one.Text("country"), one.Text("codice"), one.Text("nome")});
    });
  }
  if (only("campi", unit == UnitKind::kReference, true)) award.fields = fields.Texts("campi");
  if (only("modello", unit == UnitKind::kReference, false)) {
    award.pattern = fields.Text("modello", false, 40);
  }
  for (std::string& field : award.fields) {
    if (!base::SameText(field, "Note")) {
      field = base::UpperAscii(base::Trim(field));
      continue;
    }
    field = "Note";
    if (award.pattern.empty()) fields.FaultAt("modello", "per cercare nelle note ci vuole");
  }
  if (only("elenco", unit == UnitKind::kReference, false)) {
    award.list = fields.Text("elenco", false, 80);
    if (award.list.find_first_of("/\\:") != std::string::npos) {
      fields.FaultAt("elenco", "è un nome senza cartelle");
    }
  }
  award.same = TextsByName(fields, "stesse");
  award.former = fields.Texts("soppresse", false);
}

void ReadServices(Fields& fields, Award& award) {
  std::set<std::string> known;
  EachOf(fields, "conferme", true, [&](Fields& one) {
    Counting made;
    made.service = one.Text("servizio", true, 40);
    if (!known.insert(base::UpperAscii(made.service)).second) one.FaultAt("servizio", "c'è già");
    if (one.Has("solo con")) {
      const std::string condition = one.Text("solo con", true, 80);
      const std::size_t sign = condition.find('=');
      if (sign == std::string::npos || sign == 0 || sign + 1 == condition.size()) {
        one.FaultAt("solo con", "si scrive CAMPO=valore");
      } else {
        made.field = base::UpperAscii(base::Trim(condition.substr(0, sign)));
        made.value = base::Trim(condition.substr(sign + 1));
      }
    }
    made.ofRecord = one.YesNo("del record", false);
    const bool mayBe = award.unit == UnitKind::kSquare || award.unit == UnitKind::kField ||
                       award.unit == UnitKind::kReference;
    if (made.ofRecord && !mayBe) one.FaultAt("del record", "con questa unità non serve");
    award.counting.push_back(std::move(made));
  });
}

void ReadCredits(Fields& fields, Award& award) {
  const base::Json* const at = fields.Find("crediti");
  if (at == nullptr) return;
  Fields one(*at, "crediti", fields.Faults());
  award.creditAll = one.Texts("tutto", false);
  award.creditBand = one.Texts("banda", false);
  award.creditMode = one.Texts("modo", false);
}

void ReadGoals(Fields& fields, Award& award) {
  EachOf(fields, "traguardi", false, [&](Fields& one) {
    Goal goal;
    goal.name = one.Text("nome", true, 60);
    goal.of = one.OneOf("di", kLevels, LevelOf::kAll);
    for (const base::Json& item : one.List("quanti", goal.of != LevelOf::kSlots)) {
      const bool rises = goal.counts.empty() || item.number > goal.counts.back();
      if (item.kind != base::Json::Kind::kNumber || !(item.number >= 1) ||
          item.number > kMostCount || item.number != static_cast<int>(item.number) || !rises) {
        one.Fault(item.line, one.PathOf("quanti"), "qui ci vogliono numeri interi crescenti");
        continue;
      }
      goal.counts.push_back(static_cast<int>(item.number));
    }
    goal.bands = one.Texts("bande", false);
    for (const std::string& band : goal.bands) {
      if (!award.bands.empty() && std::ranges::find(award.bands, band) == award.bands.end()) {
        one.FaultAt("bande", fmt::format("\"{}\" non è fra le bande", band));
      }
    }
    award.goals.push_back(std::move(goal));
  });
}

ExampleContact ReadExampleContact(Fields& one) {
  ExampleContact made;
  made.line = one.Line();
  const auto when = base::ParseIso(one.Text("quando"));
  if (!when) one.FaultAt("quando", "si scrive come 2001-02-03 14:00:00");
  made.utc = when.value_or(base::DateTime());
  made.call = one.Text("nominativo");
  made.country = one.Text("country", false);
  made.continent = one.Text("continente", false);
  made.area = one.Text("area", false);
  made.province = one.Text("provincia", false);
  made.locator = one.Text("locatore", false);
  made.band = one.Text("banda");
  made.mode = one.Text("modo");
  made.propagation = one.Text("propagazione", false);
  made.note = one.Text("note", false);
  made.zoneCq = one.Whole("zona CQ", 0, 0, 40);
  made.station = one.Whole("da", 1, 1, 20);
  made.services = one.Texts("confermato da", false);
  made.fields = TextsByName(one, "campi");
  EachOf(one, "record", false, [&](Fields& record) {
    made.records.push_back(
        {record.Text("servizio"), record.Text("locatore", false), record.Text("iota", false)});
  });
  return made;
}

void ReadExamples(Fields& fields, Award& award) {
  EachOf(fields, "esempi", true, [&](Fields& one) {
    Example example;
    example.line = one.Line();
    example.mode = one.Text("modo", false);
    example.stations = one.Texts("stazioni", false);
    EachOf(one, "qso", true, [&](Fields& row) {
      example.contacts.push_back(ReadExampleContact(row));
      const int stations = std::max<int>(1, static_cast<int>(example.stations.size()));
      if (example.contacts.back().station > stations) {
        row.FaultAt("da", "non è fra le stazioni");
      }
    });
    EachOf(one, "conta", false, [&](Fields& row) {
      ExampleUnit made;
      made.line = row.Line();
      made.unit = row.Text("unità");
      made.band = row.Text("banda", false);
      made.state = row.Text("stato");
      if (std::ranges::find(kStates, made.state) == std::end(kStates)) {
        row.FaultAt("stato", "si scrive \"lavorato\", \"confermato\" o \"accreditato\"");
      }
      example.units.push_back(std::move(made));
    });
    example.worked = one.Whole("lavorati", 0, 0, kMostCount, true);
    example.confirmed = one.Whole("confermati", 0, 0, kMostCount, true);
    example.credited = one.Whole("accreditati", 0, 0, kMostCount, false);
    award.examples.push_back(std::move(example));
  });
}

void ReadAll(Fields& fields, Award& award) {
  if (fields.Whole("formato", 1, 1, 1000, true) != 1) {
    fields.FaultAt("formato", "questo programma conosce il formato 1");
  }
  award.name = fields.Text("nome", true, 60);
  award.sponsor = fields.Text("organizzatore", false, 80);
  award.page = fields.Text("pagina", false);
  award.open = fields.Texts("da completare", false);
  (void)fields.Texts("note", false);  // of whoever writes the file
  ReadUnit(fields, award);
  award.bands = fields.Texts("bande", false);
  award.modes = fields.Texts("modi", false);
  award.satellite = fields.OneOf("satellite", kSatellites, Satellite::kAny, false);
  award.from = DayOf(fields, "dal");
  award.to = DayOf(fields, "al");
  award.notPropagation = fields.Texts("senza propagazione", false);
  award.notSuffix = fields.Texts("senza suffisso", false);
  award.ownWithinKm = fields.Whole("stazioni entro km", 0, 1, 20000);
  award.ownCountry = fields.YesNo("stazioni di un country", false);
  ReadServices(fields, award);
  ReadCredits(fields, award);
  ReadGoals(fields, award);
  ReadExamples(fields, award);
}

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// How much of the text's beginning the pattern takes; 0 for nothing.
std::size_t Taken(std::string_view text, std::string_view pattern) {
  std::size_t at = 0;
  for (const char sign : pattern) {
    if (sign == '*') {
      while (at < text.size() && (IsLetter(text[at]) || IsDigit(text[at]))) ++at;
      continue;
    }
    if (at == text.size()) return 0;
    const char c = text[at];
    const bool fits = sign == 'L' ? IsLetter(c) : sign == 'N' ? IsDigit(c) : c == sign;
    if (!fits) return 0;
    ++at;
  }
  const bool goesOn = at < text.size() && (IsLetter(text[at]) || IsDigit(text[at]));
  return goesOn ? 0 : at;
}

}  // namespace

std::vector<std::string> ReferencesIn(std::string_view text, std::string_view pattern) {
  const std::string upper = base::UpperAscii(text);
  std::vector<std::string> found;
  const auto add = [&](std::string reference) {
    if (!reference.empty() && std::ranges::find(found, reference) == found.end()) {
      found.push_back(std::move(reference));
    }
  };
  if (pattern.empty()) {
    for (std::size_t from = 0; from <= upper.size();) {
      const std::size_t end = std::min(upper.find_first_of(",;", from), upper.size());
      add(base::Trim(std::string_view(upper).substr(from, end - from)));
      from = end + 1;
    }
    return found;
  }
  for (std::size_t at = 0; at < upper.size();) {
    const bool begins = at == 0 || (!IsLetter(upper[at - 1]) && !IsDigit(upper[at - 1]));
    const std::size_t taken = begins ? Taken(std::string_view(upper).substr(at), pattern) : 0;
    if (taken > 0) add(upper.substr(at, taken));
    at += std::max<std::size_t>(taken, 1);
  }
  return found;
}

ReadAward ReadAwardText(std::string_view bytes) {
  ReadAward read;
  const base::ReadJson json =
      base::ReadJsonText(bytes, {kMostAwardBytes, kMostAwardValues, kMostAwardDepth});
  if (json.fault) {
    read.faults.push_back({json.fault->line, "", json.fault->what});
    return read;
  }
  {
    Fields fields(json.tree, "", read.faults);
    if (json.tree.kind == base::Json::Kind::kObject) ReadAll(fields, read.award);
  }
  std::ranges::stable_sort(read.faults, {}, &AwardFault::line);
  return read;
}

std::vector<ListedReference> ReadReferences(std::string_view text) {
  base::CsvTable table;
  try {
    table = base::ParseCsv(text);
  } catch (const std::runtime_error&) {
    throw std::runtime_error("non è una tabella con le virgole");
  }
  if (table.Headings.size() < 2 || table.Headings[0] != "Riferimento" ||
      table.Headings[1] != "Nome") {
    throw std::runtime_error("riga 1: le prime due colonne sono Riferimento,Nome");
  }
  if (table.Rows.size() > kMostReferences) {
    throw std::runtime_error(fmt::format("più di {} righe", kMostReferences));
  }
  std::vector<ListedReference> listed;
  std::set<std::string> known;
  for (const base::CsvTable::Row& row : table.Rows) {
    std::string reference = base::UpperAscii(base::Trim(row.Cells[0]));
    if (reference.empty()) {
      throw std::runtime_error(fmt::format("riga {}: manca il riferimento", row.Line));
    }
    if (!known.insert(reference).second) {
      throw std::runtime_error(fmt::format("riga {}: {} c'è già", row.Line, reference));
    }
    listed.push_back({std::move(reference), base::Trim(row.Cells[1])});
  }
  return listed;
}

}  // namespace brenvo::diplomi
