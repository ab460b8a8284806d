#include "contact_to_fields.h"

#include <algorithm>

#include "adif/dxcc_entities.h"
#include "adif/record_to_contact.h"
#include "base/number.h"
#include "base/text.h"
#include "core/log_contact.h"
#include "core/note_tag.h"
#include "escaped_text.h"
#include "own_fields.h"
#include "plain_name.h"

namespace brenvo::adif {
namespace {

std::string OneLine(std::string_view text) {
  std::string line(Stripped(text));
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return line;
}

class FieldList {
 public:
  FieldList() { fields_.reserve(kMost); }
  void Add(std::string_view name, std::string_view value) {
    std::string line = OneLine(value);
    if (!line.empty()) fields_.push_back({std::string(name), std::move(line)});
  }
  void AddNumber(std::string_view name, double value) {
    if (value != 0) Add(name, base::PlainNumber(value));
  }
  std::vector<AdifField> Take() { return std::move(fields_); }

 private:
  static constexpr std::size_t kMost = 32;
  std::vector<AdifField> fields_;
};

void AddMode(FieldList& fields, std::string_view modo) {
  const auto mode = FindAdifMode(AdifWordOf(base::Trim(modo)));
  if (!mode) return;
  fields.Add("MODE", mode->mode);
  fields.Add("SUBMODE", mode->submode);
}

// The fields as they would be read from the file.
std::vector<AdifField> AsRead(const std::vector<AdifField>& fields, AdifLetters letters) {
  std::vector<AdifField> read;
  for (const AdifField& field : fields) {
    read.push_back({field.name, AdifBytes(field.value, letters)});
  }
  return read;
}

std::vector<AdifField> With(std::vector<AdifField> fields, const std::vector<AdifField>& others) {
  for (const AdifField& other : others) {
    const auto at = std::find_if(fields.begin(), fields.end(),
                                 [&](const AdifField& field) { return field.name == other.name; });
    if (at == fields.end()) {
      fields.push_back(other);
    } else {
      *at = other;
    }
  }
  return fields;
}

// Reads fields back and compares. Confirmations are left out: what counts as one is a choice of
// each import, so the field of the card is not what the column came from.
class Reader {
 public:
  Reader(const core::LogContact& contact, StationTables& tables, AdifLetters letters)
      : contact_(contact), tables_(tables), letters_(letters) {}

  const core::LogContact& Read(const std::vector<AdifField>& fields) {
    const bool asWritten = std::ranges::all_of(
        fields, [](const AdifField& field) { return base::IsAscii(field.value); });
    if (asWritten) {
      MapColumns(fields, {}, tables_, mapped_);
    } else {
      MapColumns(AsRead(fields, letters_), {}, tables_, mapped_);
    }
    return mapped_.contact;
  }
  bool GivesTheSame(const std::vector<AdifField>& fields) {
    core::LogContact read = Read(fields);
    read.QslRicevuta = contact_.QslRicevuta;
    return mapped_.refusal.empty() && read == contact_;
  }

 private:
  const core::LogContact& contact_;
  StationTables& tables_;
  AdifLetters letters_;
  MappedRecord mapped_;
};

bool IsConfirmedElsewhere(const std::vector<AdifField>& kept) {
  return std::any_of(kept.begin(), kept.end(), [](const AdifField& field) {
    return (field.name == "LOTW_QSL_RCVD" || field.name == "EQSL_QSL_RCVD") &&
           (base::SameText(field.value, "Y") || base::SameText(field.value, "V"));
  });
}

// The words in which the contact came, where they still say what its columns say.
std::vector<AdifField> WithOwnWords(const std::vector<AdifField>& told,
                                    const std::vector<AdifField>& words, Reader& reader) {
  std::vector<AdifField> all = With(told, words);
  if (reader.GivesTheSame(all)) return all;
  const core::LogContact plain = reader.Read(told);
  std::vector<AdifField> fields = told;
  for (const AdifField& word : words) {
    std::vector<AdifField> tried = With(fields, {word});
    core::LogContact read = reader.Read(tried);
    read.QslRicevuta = plain.QslRicevuta;
    if (read == plain) fields = std::move(tried);
  }
  return fields;
}

// What a reader of the fields would not find again.
void AddOwnFields(const core::LogContact& contact, const core::LogContact& read,
                  std::vector<AdifField>& fields) {
  for (const core::LogColumn& column : core::LogColumns()) {
    const std::string text = core::ColumnText(contact, column);
    if (core::ColumnText(read, column) == text) continue;
    fields.push_back({OwnField(column), EscapeText(text)});
  }
}

}  // namespace

std::vector<AdifField> ColumnFields(const core::LogContact& contact, const StationTables& tables) {
  FieldList fields;
  constexpr std::size_t kTimeDigits = 6;
  fields.Add("CALL", base::UpperAscii(contact.Call));
  // "yyyy-mm-dd hh:mm:ss"
  std::string when = base::IsoText(tables.Times().ToUtc(contact.DataQso));
  std::erase_if(when, [](char c) { return c < '0' || c > '9'; });
  fields.Add("QSO_DATE", std::string_view(when).substr(0, when.size() - kTimeDigits));
  fields.Add("TIME_ON", std::string_view(when).substr(when.size() - kTimeDigits));
  const AdifBand* band = tables.AdifBandOf(contact.Banda, base::Mhz(contact.Frequenza));
  if (band != nullptr) fields.Add("BAND", band->name);
  fields.AddNumber("FREQ", contact.Frequenza);
  const core::SatelliteNote satellite =
      contact.Modo == kSatellite ? core::ParseSatelliteNote(contact.Note) : core::SatelliteNote();
  const bool bySatellite = !satellite.satellite.empty();
  AddMode(fields, bySatellite ? satellite.mode : std::string_view(contact.Modo));
  fields.Add("RST_SENT", contact.QrkDato);
  fields.Add("RST_RCVD", contact.QrkRicevuto);
  fields.Add("NAME", contact.Qra);
  fields.Add("QTH", contact.Qth);
  constexpr std::size_t kLongestGrid = 8;
  const std::string grid = base::UpperAscii(contact.Locator).substr(0, kLongestGrid);
  if (IsGridSquare(grid)) fields.Add("GRIDSQUARE", grid);
  if (contact.Qrb > 0) fields.AddNumber("DISTANCE", contact.Qrb);
  fields.Add("PFX", contact.Prefisso);
  if (const DxccEntity* entity = FindDxccEntityOf(base::Trim(contact.Country))) {
    fields.AddNumber("DXCC", entity->number);
    fields.Add("COUNTRY", entity->name);
  }
  if (contact.ZonaCQ >= 1 && contact.ZonaCQ <= 40) fields.AddNumber("CQZ", contact.ZonaCQ);
  if (contact.ZonaITU >= 1 && contact.ZonaITU <= 90) fields.AddNumber("ITUZ", contact.ZonaITU);
  if (IsAdifContinent(contact.Continente)) fields.Add("CONT", base::UpperAscii(contact.Continente));
  fields.Add("STATE", contact.Provincia);
  fields.Add("PROP_MODE", AdifPropagationOf(base::Trim(contact.Propagazione)));
  if (bySatellite) {
    fields.Add("SAT_NAME", satellite.satellite);
    fields.Add("SAT_MODE", satellite.satelliteMode);
  }
  if (contact.Potenza > 0) fields.AddNumber("TX_PWR", contact.Potenza);
  fields.Add("QSL_SENT", contact.QslInviata ? "Y" : contact.QslDaInviare ? "Q" : "N");
  fields.Add("QSL_RCVD", contact.QslRicevuta ? "Y" : "N");
  fields.Add("QSL_VIA", contact.Manager);
  if (!bySatellite) fields.Add("COMMENT", contact.Note);
  return fields.Take();
}

std::vector<AdifField> FileFields(const core::LogContact& contact, std::vector<AdifField> kept,
                                  std::vector<AdifField> origin, StationTables& tables,
                                  AdifLetters letters) {
  std::vector<AdifField> fields = ColumnFields(contact, tables);
  constexpr std::int64_t kDay = 24 * 60 * 60;
  // A call is right or wrong as it stands, whatever becomes of its letters.
  if (contact.DataQso.Seconds() < kDay || core::ColumnTooSmall(contact) != nullptr ||
      !TellsWhoAndWhen(fields)) {
    return {};
  }

  // What the file said of the card holds until one has come; a confirmation by other ways is none.
  const bool cardHolds = !contact.QslRicevuta || IsConfirmedElsewhere(kept);
  std::erase_if(origin, [&](const AdifField& field) {
    return std::ranges::find(kept, field.name, &AdifField::name) != kept.end();
  });
  std::vector<AdifField> words, others = std::move(origin);
  for (AdifField& field : kept) {
    const bool own = IsColumnField(field.name) && IsValidColumnField(field);
    if (own && !cardHolds && field.name == "QSL_RCVD") continue;
    (own ? words : others).push_back(std::move(field));
  }
  Reader reader(contact, tables, letters);
  if (!words.empty()) fields = WithOwnWords(fields, words, reader);
  const core::LogContact& read = reader.Read(fields);
  if (!(read == contact)) AddOwnFields(contact, read, fields);

  std::ranges::sort(others, {}, &AdifField::name);
  for (AdifField& field : others) {
    const bool valid = !IsColumnField(field.name);
    const bool whole = base::IsAscii(field.value) || AdifBytes(field.value, letters) == field.value;
    if (!valid || !whole) {
      fields.push_back({std::string(kKeptPrefix) + field.name, EscapeText(field.value)});
    }
    if (valid) fields.push_back(std::move(field));
  }
  return fields;
}

}  // namespace brenvo::adif
