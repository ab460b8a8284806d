#include "adif/record_to_contact.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_map>

#include "adif/dxcc_entities.h"
#include "adif/adif_values.h"
#include "base/encoding.h"
#include "base/plain_letters.h"
#include "base/text.h"
#include "core/log_contact.h"
#include "escaped_text.h"
#include "own_fields.h"
#include "plain_name.h"

namespace brenvo::adif {
namespace {

// The fields that the columns come from.
enum Known : std::size_t {
  kCall,
  kQsoDate,
  kTimeOn,
  kTimeOff,
  kBand,
  kFreq,
  kMode,
  kSubmode,
  kRstSent,
  kRstRcvd,
  kName,
  kQth,
  kGridSquare,
  kDistance,
  kPfx,
  kDxcc,
  kCountry,
  kCqz,
  kItuz,
  kCont,
  kState,
  kPropMode,
  kSatName,
  kSatMode,
  kTxPwr,
  kQslSent,
  kQslRcvd,
  kQslVia,
  kComment,
  kNotes,
  kLotwRcvd,
  kEqslRcvd,
  kKnown
};

struct KnownField {
  std::string_view name;
  Known known;
  bool column;  // a column holds it
};
constexpr KnownField kKnownFields[] = {{"CALL", kCall, true},
                                       {"QSO_DATE", kQsoDate, true},
                                       {"TIME_ON", kTimeOn, true},
                                       {"TIME_OFF", kTimeOff, false},
                                       {"BAND", kBand, true},
                                       {"FREQ", kFreq, true},
                                       {"MODE", kMode, true},
                                       {"SUBMODE", kSubmode, true},
                                       {"RST_SENT", kRstSent, true},
                                       {"RST_RCVD", kRstRcvd, true},
                                       {"NAME", kName, true},
                                       {"QTH", kQth, true},
                                       {"GRIDSQUARE", kGridSquare, true},
                                       {"DISTANCE", kDistance, true},
                                       {"PFX", kPfx, true},
                                       {"DXCC", kDxcc, true},
                                       {"COUNTRY", kCountry, true},
                                       {"CQZ", kCqz, true},
                                       {"ITUZ", kItuz, true},
                                       {"CONT", kCont, true},
                                       {"STATE", kState, true},
                                       {"VE_PROV", kState, true},
                                       {"PROP_MODE", kPropMode, true},
                                       {"SAT_NAME", kSatName, true},
                                       {"SAT_MODE", kSatMode, true},
                                       {"TX_PWR", kTxPwr, true},
                                       {"QSL_SENT", kQslSent, true},
                                       {"QSL_RCVD", kQslRcvd, true},
                                       {"QSL_VIA", kQslVia, true},
                                       {"COMMENT", kComment, true},
                                       {"NOTES", kNotes, true},
                                       {"LOTW_QSL_RCVD", kLotwRcvd, false},
                                       {"EQSL_QSL_RCVD", kEqslRcvd, false}};

const KnownField* FindKnown(std::string_view name) {
  static const auto kByName = [] {
    std::unordered_map<std::string_view, const KnownField*> fields;
    for (const KnownField& field : kKnownFields) fields.emplace(field.name, &field);
    return fields;
  }();
  const auto found = kByName.find(name);
  return found == kByName.end() ? nullptr : found->second;
}

// The record's fields by what they are; an empty text for what it does not say.
class Fields {
 public:
  explicit Fields(const std::vector<AdifField>& fields) {
    for (const AdifField& field : fields) {
      const KnownField* known = field.value.empty() ? nullptr : FindKnown(field.name);
      if (known != nullptr && values_[known->known].empty()) values_[known->known] = field.value;
    }
  }
  std::string_view operator[](Known known) const { return values_[known]; }
  bool Says(Known known) const { return !values_[known].empty(); }

 private:
  std::array<std::string_view, kKnown> values_{};
};

// One line of text.
std::string Line(std::string_view text) {
  std::string line;
  for (const char c : Stripped(text)) {
    const bool end = c == '\r' || c == '\n';
    if (!end) {
      line += c;
    } else if (line.back() != ' ') {
      line += ' ';
    }
  }
  return line;
}

bool IsCall(std::string_view call) {
  return std::all_of(call.begin(), call.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' || c == '-';
  });
}

// Empty when call, date and time are right. The time is the file's.
std::string MapWhoAndWhen(const Fields& fields, core::LogContact& contact) {
  contact.Call = base::UpperAscii(fields[kCall]);
  if (contact.Call.empty()) return "manca il nominativo (CALL)";
  if (!IsCall(contact.Call)) return fmt::format("nominativo non valido: {}", fields[kCall]);
  if (!fields.Says(kQsoDate)) return "manca la data (QSO_DATE)";
  const auto date = DateIn(fields[kQsoDate]);
  if (!date) return fmt::format("data non valida: {}", fields[kQsoDate]);
  contact.DataQso = *date;
  const Known timeField = fields.Says(kTimeOn) ? kTimeOn : kTimeOff;
  if (!fields.Says(timeField)) return {};
  const auto time = TimeIn(fields[timeField]);
  if (!time) return fmt::format("ora non valida: {}", fields[timeField]);
  contact.DataQso = *date + *time;
  return {};
}

bool IsOneWord(std::string_view text) {
  return !text.empty() && text.find_first_of(" \t\r\n<>") == std::string_view::npos;
}

// Empty unless a field without which there is no contact was told with a wrong length, and what
// was read of it is none. Call, date and time speak for themselves.
std::string Unreadable(const std::vector<AdifField>& all, const std::vector<AdifRepair>& repairs,
                       const Fields& fields) {
  for (const AdifRepair& repair : repairs) {
    const AdifField& field = all[repair.field];
    const KnownField* known = FindKnown(field.name);
    if (known == nullptr) continue;
    const bool band = FindAdifBand(fields[kBand]) != nullptr || NumberIn(fields[kFreq]);
    const bool mode = FindAdifMode(fields[kMode]).has_value() || IsOneWord(fields[kMode]);
    const bool isBand = known->known == kBand || known->known == kFreq;
    if ((isBand && !band) || (known->known == kMode && !mode)) {
      return fmt::format("il campo {} non si legge: {}", field.name, field.value);
    }
  }
  return {};
}

void MapBand(const Fields& fields, const StationTables& tables, core::LogContact& contact) {
  const AdifBand* band = FindAdifBand(fields[kBand]);
  double frequency = NumberIn(fields[kFreq]).value_or(0);
  // Kilohertz where megahertz are due.
  constexpr double kKhzPerMhz = 1000;
  const double inMhz = frequency / kKhzPerMhz;
  if (band != nullptr ? frequency > band->upper && inMhz >= band->lower && inMhz <= band->upper
                      : AdifBandAt(base::Mhz(frequency)) == nullptr &&
                            AdifBandAt(base::Mhz(inMhz)) != nullptr) {
    frequency = inMhz;
  }
  if (band != nullptr) {
    contact.Banda = tables.BandaOf(band->name);
  } else if (frequency != 0) {
    contact.Banda = tables.BandaAt(base::Mhz(frequency));
  }
  // A band that nobody knows is one all the same.
  if (contact.Banda.empty() && IsOneWord(fields[kBand])) {
    contact.Banda = tables.BandaOf(fields[kBand]);
  }
  contact.Frequenza = frequency != 0 || contact.Banda.empty()
                          ? frequency
                          : tables.FrequencyOf(contact.Banda).Value();
}

void MapMode(const Fields& fields, StationTables& tables, core::LogContact& contact) {
  contact.Modo = tables.ModoOf(fields[kMode], fields[kSubmode]);
  contact.Propagazione = tables.PropagazioneOf(fields[kPropMode]);
  if (!fields.Says(kSatName)) return;
  std::string satelliteMode(fields[kSatMode]);
  std::erase_if(satelliteMode, [](char c) { return c == '/' || c == ',' || c == ' '; });
  std::string satellite = Line(fields[kSatName]);
  std::replace(satellite.begin(), satellite.end(), '/', '-');
  contact.Note = fmt::format("[{}/{}/{}]", satellite, satelliteMode, contact.Modo);
  contact.Modo = kSatellite;
  contact.Propagazione = kSatellite;
}

// What the call itself tells of its place; each looked up only where the record is silent.
class PlaceOfCall {
 public:
  PlaceOfCall(std::string_view call, base::DateTime utc, StationTables& tables)
      : call_(call), utc_(utc), tables_(tables) {}

  const core::CallPlace& ByPrefix() {
    if (prefix_ == nullptr) prefix_ = &tables_.Prefix(call_);
    return *prefix_;
  }
  // By who the call was on that day, by the prefix table where nobody knows it.
  const core::CallPlace& OnDay() {
    if (!onDay_) {
      answer_ = tables_.OnDay(call_, utc_);
      onDay_ = core::PlaceOnDay(ByPrefix(), answer_);
    }
    return *onDay_;
  }
  // The rule of the day, where it gives another country than the prefix table.
  std::optional<core::AppliedRule> Applied() {
    if (base::SameText(base::Trim(OnDay().Country), base::Trim(ByPrefix().Country))) return {};
    return core::AppliedRuleOf(call_, answer_);
  }
  // What holds for the country: a prefix of another one tells nothing of this one's zones.
  const core::CallPlace& For(std::string_view country) {
    const std::string wanted = base::Trim(country);
    for (const core::CallPlace* facts : {&OnDay(), &ByPrefix()}) {
      if (base::SameText(wanted, base::Trim(facts->Country))) return *facts;
    }
    return tables_.OfCountry(country);
  }

 private:
  std::string_view call_;
  base::DateTime utc_;
  StationTables& tables_;
  const core::CallPlace* prefix_ = nullptr;
  entities::Answer answer_;
  std::optional<core::CallPlace> onDay_;
};

std::string ToldPrefix(const Fields& fields) {
  constexpr std::size_t kLongestPrefix = 5;
  const std::string told = base::UpperAscii(fields[kPfx]);
  return IsCall(told) && told.size() <= kLongestPrefix ? told : std::string();
}

// The country that the record tells, its number too where it tells that; nothing where it tells
// none, and empty for none.
std::optional<std::string> ToldCountry(const Fields& fields, const StationTables& tables,
                                       std::optional<int>& told) {
  const auto number = WholeIn(fields[kDxcc], 0, 999);
  if (number && *number == 0) {
    told = 0;
    return std::string();
  }
  if (const DxccEntity* entity = number ? FindDxccEntity(*number) : nullptr) {
    told = entity->number;
    return std::string(entity->country);
  }
  if (!fields.Says(kCountry)) return std::nullopt;
  if (const DxccEntity* named = FindDxccEntityNamed(fields[kCountry])) {
    return std::string(named->country);
  }
  std::string listed = tables.CountryNamed(fields[kCountry]);
  return listed.empty() ? std::nullopt : std::optional(std::move(listed));
}

void MapCountry(const Fields& fields, base::DateTime utc, StationTables& tables,
                MappedRecord& mapped) {
  core::LogContact& contact = mapped.contact;
  PlaceOfCall place(contact.Call, utc, tables);
  contact.Prefisso = ToldPrefix(fields);
  if (contact.Prefisso.empty()) contact.Prefisso = place.ByPrefix().Prefisso;
  const auto country = ToldCountry(fields, tables, mapped.country);
  contact.Country = country ? *country : place.OnDay().Country;
  if (!mapped.country && !fields.Says(kCountry)) mapped.applied = place.Applied();
  const auto cq = WholeIn(fields[kCqz], 1, 40), itu = WholeIn(fields[kItuz], 1, 90);
  const bool continent = IsAdifContinent(fields[kCont]);
  if (continent) contact.Continente = base::UpperAscii(fields[kCont]);
  if (cq) contact.ZonaCQ = *cq;
  if (itu) contact.ZonaITU = *itu;
  if (!cq || !itu || !continent) {
    const core::CallPlace& facts = place.For(contact.Country);
    if (!cq) contact.ZonaCQ = facts.ZonaCQ;
    if (!itu) contact.ZonaITU = facts.ZonaITU;
    if (!continent) contact.Continente = facts.Continente;
  }
  const std::string province = base::UpperAscii(fields[kState]);
  if (!province.empty() && tables.IsProvince(contact.Country, province))
    contact.Provincia = province;
}

void MapQsl(const Fields& fields, const QslChoice& choice, core::LogContact& contact) {
  const auto is = [&](Known known, std::string_view words) {
    return fields[known].size() == 1 && words.find(base::UpperAscii(fields[known])) != words.npos;
  };
  constexpr std::string_view kYes = "Y", kReceived = "YV", kWanted = "RQ";
  contact.QslInviata = is(kQslSent, kYes);
  contact.QslDaInviare = is(kQslSent, kWanted);
  contact.QslRicevuta = (choice.card && is(kQslRcvd, kReceived)) ||
                        (choice.lotw && is(kLotwRcvd, kReceived)) ||
                        (choice.eqsl && is(kEqslRcvd, kReceived));
}

void MapNote(const Fields& fields, core::LogContact& contact) {
  if (!contact.Note.empty()) return;  // the satellite's shorthand stands alone, for the labels
  contact.Note = Line(fields[kComment]);
  const std::string notes = Line(fields[kNotes]);
  if (notes.empty() || contact.Note.find(notes) != std::string::npos) return;
  contact.Note += (contact.Note.empty() ? "" : " ") + notes;
}

void MapOwnFields(const std::vector<AdifField>& fields, core::LogContact& contact) {
  for (const AdifField& field : fields) {
    if (!field.name.starts_with(kOwnFieldPrefix)) continue;
    for (const core::LogColumn& column : core::LogColumns()) {
      if (OwnField(column) != field.name) continue;
      core::SetColumnText(contact, column, UnescapeText(field.value));
    }
  }
}

bool IsNumberField(std::string_view name) {
  constexpr std::string_view kNumbers[] = {"FREQ", "TX_PWR", "DISTANCE", "CQZ", "ITUZ", "DXCC"};
  return std::find(std::begin(kNumbers), std::end(kNumbers), name) != std::end(kNumbers);
}

bool IsWordField(std::string_view name) {
  constexpr std::string_view kTexts[] = {"NAME", "QTH", "COMMENT", "NOTES"};
  return std::find(std::begin(kTexts), std::end(kTexts), name) == std::end(kTexts);
}

// Whether two values of a column's field say the same.
bool SaySame(std::string_view name, std::string_view a, std::string_view b) {
  if (a == b) return true;
  if (IsNumberField(name)) {
    const auto x = NumberIn(a), y = NumberIn(b);
    return x && y && *x == *y;
  }
  if (name == "TIME_ON") {
    const auto x = TimeIn(a), y = TimeIn(b);
    return x && y && *x == *y;
  }
  return IsWordField(name) && base::SameText(a, b);
}

void Keep(std::vector<AdifField>& kept, std::string_view name, std::string_view value) {
  if (value.empty()) return;
  for (const AdifField& field : kept) {
    if (field.name == name) return;
  }
  kept.push_back({std::string(name), std::string(value)});
}

// A submode under the name of a mode, as it used to be written, is told as what it is.
bool IsToldAsSubmode(const AdifField& field, const std::vector<AdifField>& told) {
  const auto mode = field.name == "MODE" ? FindAdifMode(field.value) : std::nullopt;
  return mode && !mode->submode.empty() &&
         std::find(told.begin(), told.end(), AdifField{"SUBMODE", mode->submode}) != told.end();
}

void MapFields(const std::vector<AdifField>& all, const std::vector<AdifRepair>& repairs,
               const QslChoice& choice, StationTables& tables, MappedRecord& mapped) {
  const Fields fields(all);
  core::LogContact& contact = mapped.contact;
  mapped.refusal = MapWhoAndWhen(fields, contact);
  if (mapped.refusal.empty()) mapped.refusal = Unreadable(all, repairs, fields);
  if (!mapped.refusal.empty()) return;
  const base::DateTime utc = contact.DataQso;
  contact.DataQso = tables.Times().FromUtc(utc);
  MapBand(fields, tables, contact);
  MapMode(fields, tables, contact);
  MapCountry(fields, utc, tables, mapped);
  contact.QrkDato = Line(fields[kRstSent]);
  contact.QrkRicevuto = Line(fields[kRstRcvd]);
  contact.Qra = Line(fields[kName]);
  contact.Qth = Line(fields[kQth]);
  contact.Manager = Line(fields[kQslVia]);
  const std::string locator = base::UpperAscii(fields[kGridSquare]);
  if (IsGridSquare(locator)) contact.Locator = locator;
  const auto distance = NumberIn(fields[kDistance]);
  contact.Qrb = distance                  ? std::round(*distance)
                : contact.Locator.empty() ? 0
                                          : tables.Distance(contact.Locator);
  contact.Potenza = std::round(NumberIn(fields[kTxPwr]).value_or(0));
  MapQsl(fields, choice, contact);
  MapNote(fields, contact);
  MapOwnFields(all, contact);
  if (const core::LogColumn* column = core::ColumnTooSmall(contact)) {
    mapped.refusal = fmt::format("un valore non sta nella colonna {}: {}", column->name,
                                 core::ColumnText(contact, *column));
  }
}

void Begin(MappedRecord& mapped) {
  mapped.contact = {};
  mapped.country.reset();
  mapped.applied.reset();
  mapped.kept.clear();
  mapped.refusal.clear();
}

}  // namespace

void MapColumns(const AdifRecord& record, const QslChoice& choice, StationTables& tables,
                MappedRecord& mapped) {
  Begin(mapped);
  mapped.refusal = record.fault;
  if (mapped.refusal.empty()) MapFields(record.fields, record.repairs, choice, tables, mapped);
}

void MapColumns(const std::vector<AdifField>& fields, const QslChoice& choice,
                StationTables& tables, MappedRecord& mapped) {
  Begin(mapped);
  MapFields(fields, {}, choice, tables, mapped);
}

namespace {

// Whether a file of ASCII, or of Windows-1252, would have the text like this.
bool IsWithFewerLetters(std::string_view fewer, std::string_view text) {
  if (base::IsAscii(text)) return false;
  return base::ToPlainLetters(text).text == fewer ||
         base::FromWindows1252(base::ToWindows1252(text)) == fewer;
}

}  // namespace

void MapRest(const AdifRecord& record, const std::vector<AdifField>& told, MappedRecord& mapped) {
  mapped.kept.clear();
  for (const AdifField& field : record.fields) {
    if (field.value.empty()) continue;
    if (field.name.starts_with(kKeptPrefix)) {
      Keep(mapped.kept, std::string_view(field.name).substr(kKeptPrefix.size()),
           UnescapeText(field.value));
    }
  }
  for (const AdifField& field : record.fields) {
    if (field.value.empty() || field.name.starts_with(kOwnFieldPrefix)) continue;
    const KnownField* known = FindKnown(field.name);
    if (known != nullptr && known->column) {
      const bool given = std::any_of(told.begin(), told.end(), [&](const AdifField& each) {
        return each.name == field.name && (SaySame(field.name, each.value, field.value) ||
                                           IsWithFewerLetters(field.value, each.value));
      });
      if (given || IsToldAsSubmode(field, told)) continue;
    }
    Keep(mapped.kept, field.name, field.value);
  }
}

bool TellsWhoAndWhen(const std::vector<AdifField>& fields) {
  core::LogContact contact;
  return MapWhoAndWhen(Fields(fields), contact).empty();
}

bool IsColumnField(std::string_view name) {
  const KnownField* known = FindKnown(name);
  return known != nullptr && known->column;
}

bool IsValidColumnField(const AdifField& field) {
  const std::string value = base::UpperAscii(field.value);
  const auto oneOf = [&](std::string_view letters) {
    return value.size() == 1 && letters.find(value) != std::string_view::npos;
  };
  const KnownField* known = FindKnown(field.name);
  if (known == nullptr) return true;
  switch (known->known) {
    case kQsoDate:
      return value.size() == 8 && DateIn(value).has_value();
    case kTimeOn:
      return (value.size() == 4 || value.size() == 6) && TimeIn(value).has_value();
    case kBand:
      return FindAdifBand(value) != nullptr;
    case kMode: {
      const auto mode = FindAdifMode(value);
      return mode && mode->submode.empty();
    }
    case kPropMode:
      return !PropagationOf(value).empty();
    case kGridSquare:
      return IsGridSquare(value);
    case kCqz:
      return WholeIn(value, 1, 40).has_value();
    case kItuz:
      return WholeIn(value, 1, 90).has_value();
    case kCont:
      return IsAdifContinent(value);
    case kDxcc: {
      const auto number = WholeIn(value, 0, 999);
      return number && (*number == 0 || FindDxccEntity(*number) != nullptr);
    }
    case kFreq:
    case kDistance:
    case kTxPwr:
      return !value.empty() && value.find_first_not_of("0123456789.") == value.npos &&
             NumberIn(value).has_value();
    case kQslSent:
      return oneOf("YNRQI");
    case kQslRcvd:
      return oneOf("YNRI");
    case kNotes:
      return true;
    default:
      return field.value.find_first_of("\r\n") == std::string::npos;
  }
}

}  // namespace brenvo::adif
