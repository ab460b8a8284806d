#include <fmt/format.h>

#include <algorithm>

#include "base/json_fields.h"
#include "base/json_tree.h"
#include "base/text.h"
#include "gara/rule.h"

namespace brenvo::gara {
namespace {

using base::Json;
using base::Word;

constexpr Word<int> kWeekdays[] = {{"domenica", 0},  {"lunedì", 1},  {"martedì", 2},
                                   {"mercoledì", 3}, {"giovedì", 4}, {"venerdì", 5},
                                   {"sabato", 6}};
constexpr Word<PartKind> kParts[] = {{"rapporto", PartKind::kReport},
                                     {"progressivo", PartKind::kSerial},
                                     {"locatore", PartKind::kLocator},
                                     {"provincia", PartKind::kProvince},
                                     {"proprio", PartKind::kOwn}};
constexpr Word<PointKind> kPointKinds[] = {{"km", PointKind::kKm},
                                           {"anelli", PointKind::kRings},
                                           {"fisso", PointKind::kFixed},
                                           {"tabella", PointKind::kTable}};
constexpr Word<Nearness> kNearness[] = {{"sempre", Nearness::kAny},
                                        {"stesso country", Nearness::kOwnCountry},
                                        {"stesso continente", Nearness::kOwnContinent},
                                        {"altro continente", Nearness::kOtherContinent},
                                        {"country", Nearness::kCountries}};
constexpr Word<MultiplierKind> kMultipliers[] = {{"quadrato", MultiplierKind::kSquare},
                                                 {"prefisso", MultiplierKind::kPrefix},
                                                 {"provincia", MultiplierKind::kProvince},
                                                 {"country", MultiplierKind::kCountry},
                                                 {"scambio", MultiplierKind::kExchange}};
constexpr Word<Per> kPer[] = {
    {"contest", Per::kContest}, {"banda", Per::kBand}, {"banda e modo", Per::kBandAndMode}};
constexpr Word<LogFormat> kFormats[] = {{"edi", LogFormat::kEdi},
                                        {"cabrillo", LogFormat::kCabrillo}};
constexpr Word<bool> kSerialPer[] = {{"banda", true}, {"contest", false}};
constexpr Word<bool> kScorePer[] = {{"contest", false}, {"banda", true}};
constexpr std::string_view kModes[] = {"CW", "SSB", "FM", "AM", "RTTY", "DIGI"};
constexpr double kMostPoints = 1e6;
constexpr int kMostMinutes = 60 * 24 * 31;

class Fields : public base::JsonFields {
 public:
  using JsonFields::JsonFields;
  std::map<std::string, double> Factors(std::string_view name) {
    std::map<std::string, double> factors;
    const Json* const at = Get(name, false, Json::Kind::kObject, "{ ... }");
    if (at == nullptr) return factors;
    for (const auto& [key, value] : at->members) {
      if (value.kind != Json::Kind::kNumber || !(value.number >= 0 && value.number <= 1000)) {
        Fault(value.line, PathOf(name) + '.' + key, "ci vuole un numero da 0 a 1000");
        continue;
      }
      factors[base::UpperAscii(key)] = value.number;
    }
    return factors;
  }
};

template <class Read>
void EachOf(Fields& fields, std::string_view name, bool mustBe, const Read& read) {
  base::EachObject<Fields>(fields, name, mustBe, read);
}

bool OfRule(const std::vector<std::string>& known, std::string_view value) {
  return std::ranges::find(known, value) != known.end();
}

void ReadWindows(Fields& fields, Rule& rule) {
  // A contest whose days are not known yet has none.
  EachOf(fields, "finestre", rule.IsComplete(), [&](Fields& one) {
    RuleWindow window;
    window.name = one.Text("nome", false, 60);
    if (one.Has("data")) {
      const std::string text = one.Text("data");
      const auto day = text.size() == 10 ? base::ParseIso(text) : std::nullopt;
      if (!day) one.FaultAt("data", "la data si scrive come 2025-02-01");
      window.day = day.value_or(base::DateTime());
    } else {
      window.month = one.Whole("mese", 1, 1, 12, true);
      window.which = one.Whole("quale", 1, -1, 5, true);
      if (window.which == 0) one.FaultAt("quale", "va da 1 a 5, o -1 per l'ultimo");
      window.weekday = one.OneOf("giorno", kWeekdays, 6);
      if (window.which == 0) window.which = 1;
    }
    window.beginMinute = one.Minutes("inizio", 0);
    window.lengthMinutes = one.Whole("minuti", 60, 1, kMostMinutes, true);
    window.bands = one.Texts("bande", false);
    for (const std::string& band : window.bands) {
      if (!OfRule(rule.bands, band))
        one.FaultAt("bande", fmt::format("\"{}\" non è fra le bande", band));
    }
    rule.windows.push_back(std::move(window));
  });
}

void ReadExchange(Fields& fields, Rule& rule) {
  EachOf(fields, "scambio", true, [&](Fields& one) {
    ExchangePart part;
    part.kind = one.OneOf("campo", kParts, PartKind::kReport);
    part.mayLack = one.YesNo("facoltativo", false);
    if (part.kind == PartKind::kSerial) part.serialPerBand = one.OneOf("per", kSerialPer, true);
    if (part.kind == PartKind::kOwn) {
      part.name = one.Text("nome", true, 20);
      part.pattern = one.Text("modello", true, 20);
      if (part.pattern.find_first_not_of("LN*") != std::string::npos) {
        one.FaultAt("modello", "si scrive con L (lettera), N (cifra) e * (l'una o l'altra)");
      }
    }
    if (rule.Part(part.kind) != nullptr) one.FaultAt("campo", "c'è già");
    rule.exchange.push_back(std::move(part));
  });
}

void ReadPoints(Fields& fields, Rule& rule) {
  const Json* const at = fields.Find("punti");
  if (at == nullptr) {
    fields.Fault(fields.Line(), "punti", "manca");
    return;
  }
  Fields one(*at, "punti", fields.Faults());
  Points& points = rule.points;
  points.kind = one.OneOf("tipo", kPointKinds, PointKind::kFixed);
  if (points.kind == PointKind::kKm) {
    points.kmPerDegree = one.Number("km per grado", 111.2, 100, 120);
    points.truncates = one.YesNo("tronca", true);
    points.added = one.Number("aggiunge", 0, 0, 1000);
  } else if (points.kind == PointKind::kRings) {
    points.ownSquare = one.Number("proprio", 1, 0, 1000);
  } else if (points.kind == PointKind::kFixed) {
    points.fixed = one.Number("valore", 1, 0, kMostPoints, true);
  } else {
    EachOf(one, "voci", true, [&](Fields& row) {
      TableRow made;
      made.when = row.OneOf("se", kNearness, Nearness::kAny);
      if (made.when == Nearness::kCountries) made.countries = row.Texts("codici");
      made.points = row.Number("valore", 0, 0, kMostPoints, true);
      points.table.push_back(std::move(made));
    });
  }
  points.modeFactor = one.Factors("per modo");
  for (const auto& [mode, factor] : points.modeFactor) {
    if (!OfRule(rule.modes, mode))
      one.FaultAt("per modo", fmt::format("\"{}\" non è fra i modi", mode));
  }
  points.zoneFactor = one.Factors("zone");
  const bool needsLocator = points.kind == PointKind::kKm || points.kind == PointKind::kRings;
  if (needsLocator && rule.Part(PartKind::kLocator) == nullptr) {
    one.FaultAt("tipo", "nello scambio manca il locatore");
  }
}

void ReadMultipliers(Fields& fields, Rule& rule) {
  EachOf(fields, "moltiplicatori", false, [&](Fields& one) {
    Multiplier made;
    made.kind = one.OneOf("tipo", kMultipliers, MultiplierKind::kSquare);
    made.per = one.OneOf("per", kPer, Per::kBand);
    made.without = one.Texts("senza", false);
    if (made.kind == MultiplierKind::kSquare && rule.Part(PartKind::kLocator) == nullptr) {
      one.FaultAt("tipo", "nello scambio manca il locatore");
    }
    if ((made.kind == MultiplierKind::kProvince && rule.Part(PartKind::kProvince) == nullptr) ||
        (made.kind == MultiplierKind::kExchange && rule.Part(PartKind::kOwn) == nullptr)) {
      one.FaultAt("tipo", "nello scambio non c'è");
    }
    rule.multipliers.push_back(std::move(made));
  });
}

void ReadLog(Fields& fields, Rule& rule) {
  const Json* const at = fields.Find("log");
  if (at == nullptr) {
    fields.Fault(fields.Line(), "log", "manca");
    return;
  }
  Fields one(*at, "log", fields.Faults());
  rule.format = one.OneOf("formato", kFormats, LogFormat::kEdi);
  rule.fileName = one.Text("file", false, 60);
  if (rule.fileName.find_first_of("/\\:") != std::string::npos) {
    one.FaultAt("file", "è un nome senza cartelle");
  }
  if (rule.fileName.empty()) {
    rule.fileName = rule.format == LogFormat::kEdi ? "{CALL}_{BANDA}.edi" : "{CALL}.log";
  }
  rule.sendTo = one.Text("dove", false);
  if (const Json* const deadline = one.Find("scadenza")) {
    Fields when(*deadline, "log.scadenza", one.Faults());
    Deadline made;
    if (when.Has("giorno")) {
      made.weekday = when.OneOf("giorno", kWeekdays, 3);
    } else {
      made.days = when.Whole("giorni", 7, 0, 365, true);
    }
    made.minute = std::min(when.Minutes("ora", 24 * 60 - 1, false), 24 * 60 - 1);
    rule.deadline = made;
  }
}

void ReadExamples(Fields& fields, Rule& rule) {
  EachOf(fields, "esempi", true, [&](Fields& one) {
    Example example;
    example.line = one.Line();
    example.call = one.Text("nominativo");
    example.locator = one.Text("locatore", false);
    example.exchange = one.Text("scambio", false);
    example.country = one.Text("country", false);
    example.continent = one.Text("continente", false);
    EachOf(one, "qso", true, [&](Fields& row) {
      ExampleContact made;
      made.line = row.Line();
      made.band = row.Text("banda");
      if (!OfRule(rule.bands, made.band)) row.FaultAt("banda", "non è fra le bande");
      made.mode = row.Text("modo");
      made.call = row.Text("nominativo");
      made.locator = row.Text("locatore", false);
      made.exchange = row.Text("scambio", false);
      made.country = row.Text("country", false);
      made.continent = row.Text("continente", false);
      made.points = row.Whole("punti", 0, 0, 100000000, true);
      made.multipliers = row.Texts("moltiplicatori", false);
      made.isDuplicate = row.YesNo("doppio", false);
      example.contacts.push_back(std::move(made));
    });
    example.points = one.Whole("punti", 0, 0, 1000000000, true);
    example.multipliers = one.Whole("moltiplicatori", 0, 0, 1000000, false);
    example.score = one.Whole("punteggio", 0, 0, 2000000000, true);
    rule.examples.push_back(std::move(example));
  });
}

void ReadAll(Fields& fields, Rule& rule) {
  if (fields.Whole("formato", 1, 1, 1000, true) != 1) {
    fields.FaultAt("formato", "questo programma conosce il formato 1");
  }
  rule.name = fields.Text("nome", true, 60);
  rule.sponsor = fields.Text("organizzatore", true, 80);
  rule.page = fields.Text("pagina", false);
  rule.contestId = fields.Text("sigla", true, 60);
  rule.year = fields.Whole("anno", 2024, 1990, 2100, true);
  rule.open = fields.Texts("da completare", false);
  (void)fields.Texts("note", false);  // of whoever writes the file
  rule.bands = fields.Texts("bande");
  rule.modes = fields.Texts("modi");
  for (const std::string& mode : rule.modes) {
    if (std::ranges::find(kModes, mode) == std::end(kModes)) {
      fields.FaultAt("modi", fmt::format("\"{}\" non c'è: CW, SSB, FM, AM, RTTY, DIGI", mode));
    }
  }
  EachOf(fields, "categorie", false, [&](Fields& one) {
    Category category{one.Text("parole", true, 60), one.Text("nome", false, 80)};
    category.hours = one.Whole("ore", 0, 1, 48);
    category.periods = one.Whole("periodi", 1, 1, 10);
    category.pauseMinutes = one.Whole("pausa", 0, 1, 24 * 60);
    rule.categories.push_back(std::move(category));
  });
  ReadWindows(fields, rule);
  ReadExchange(fields, rule);
  ReadPoints(fields, rule);
  ReadMultipliers(fields, rule);
  rule.scorePerBand = fields.OneOf("punteggio per", kScorePer, false, false);
  rule.duplicates = fields.OneOf("doppi per", kPer, Per::kBand);
  ReadLog(fields, rule);
  ReadExamples(fields, rule);
}

}  // namespace

ReadRule ReadRuleText(std::string_view bytes) {
  ReadRule read;
  const base::ReadJson json =
      base::ReadJsonText(bytes, {kMostRuleBytes, kMostRuleValues, kMostRuleDepth});
  if (json.fault) {
    read.faults.push_back({json.fault->line, "", json.fault->what});
    return read;
  }
  {
    Fields fields(json.tree, "", read.faults);
    if (json.tree.kind == Json::Kind::kObject) ReadAll(fields, read.rule);
  }
  std::ranges::stable_sort(read.faults, {}, &RuleFault::line);
  return read;
}

}  // namespace brenvo::gara
