#include "adif/adif_import.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "base/text.h"
#include "card_fields.h"
#include "contact_to_fields.h"
#include "core/history.h"
#include "core/log_contact.h"
#include "core/transaction.h"
#include "engine/watched.h"
#include "kept_fields.h"
#include "record_origin.h"
#include "record_storing.h"

namespace brenvo::adif {
namespace {

// Records between two looks at the operator's wish to stop.
constexpr std::int64_t kProgressStep = 250;

constexpr core::CardSide kCardSides[] = {core::CardSide::kSent, core::CardSide::kReceived};

class LogFile {
 public:
  explicit LogFile(const std::filesystem::path& file)
      : name_(file.filename().string()), in_(file, std::ios::binary), reader_(MakeReader()) {
    if (!in_) throw std::runtime_error(fmt::format("Il file {} non si apre", name_));
    std::string first(AdifReader::kLongestRecord, '\0');
    in_.read(first.data(), static_cast<std::streamsize>(first.size()));
    first.resize(static_cast<std::size_t>(in_.gcount()));
    const std::string other = OtherThanAdif(first);
    if (!other.empty()) {
      throw std::runtime_error(fmt::format("{} non è un file ADIF: è {}", name_, other));
    }
    in_.clear();
    in_.seekg(0);
  }
  AdifReader& Records() { return reader_; }

 private:
  AdifReader MakeReader() {
    return AdifReader([this](char* buffer, std::size_t size) {
      in_.read(buffer, static_cast<std::streamsize>(size));
      if (in_.bad()) throw std::runtime_error(fmt::format("Il file {} non si legge", name_));
      return static_cast<std::size_t>(in_.gcount());
    });
  }

  std::string name_;
  std::ifstream in_;
  AdifReader reader_;
};

// At most this much of a text is shown of a repaired field.
constexpr std::size_t kShownOfText = 60;

std::vector<RepairedField> RepairsOf(const AdifRecord& record) {
  std::vector<RepairedField> repairs;
  const std::string* call = record.Find("CALL");
  for (const AdifRepair& each : record.repairs) {
    const AdifField& field = record.fields[each.field];
    std::string text = base::Left(field.value, kShownOfText);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    repairs.push_back({record.line, call == nullptr ? "" : *call, field.name, std::move(text),
                       each.told, each.read});
  }
  return repairs;
}

void ReportRepairs(std::ostream& report, const AdifRecord& record) {
  for (const RepairedField& each : RepairsOf(record)) {
    report << fmt::format(
        "Riparato, riga {}, {}: campo {}, lunghezza detta {}, letta {}: {}\r\n\r\n", each.line,
        each.call, each.name, each.told, each.read, each.text);
  }
}

void ReportRefusal(std::ostream& report, const AdifReader& reader, const AdifRecord& record,
                   std::string_view reason) {
  std::string text = TextOfBytes(reader.RecordBytes());
  std::string lines;
  for (const char c : text) {
    if (c == '\n') lines += '\r';
    if (c != '\r') lines += c;
  }
  report << fmt::format("Riga {}: {}\r\n{}\r\n\r\n", record.line, reason, lines);
}

void ReportCounts(std::ostream& report, const ImportCounts& counts) {
  report << fmt::format(
      "Record letti: {}\r\nImportati: {}\r\nRipetuti: {} (completati: {})\r\nRifiutati: {}\r\n",
      counts.read, counts.fresh, counts.repeated, counts.completed, counts.refused);
  if (counts.moved > 0) report << fmt::format("Spostati nel minuto: {}\r\n", counts.moved);
  if (counts.repairs > 0) report << fmt::format("Campi riparati: {}\r\n", counts.repairs);
}

class ContactWriter {
 public:
  ContactWriter(core::Session& session, const ImportOptions& options, StationTables& tables,
                std::ostream& report)
      : options_(options),
        tables_(tables),
        report_(report),
        session_(session),
        database_(session.Db),
        kept_(session.Db),
        cards_(session.Db),
        repeated_(session),
        origins_(session),
        beside_(session.Db.OpenAppender("EntitaQso")),
        contacts_(session.Contacts),
        new_(contacts_.OpenAppender()) {}

  // Within the transaction, before the first contact: where the file brings most of the log, its
  // indexes cost less when they are made of it as a whole.
  void MakeIndexesBehind(const std::filesystem::path& file) {
    constexpr std::int64_t kUsualRecord = 400, kTimesAsMany = 2;  // bytes; of what the log holds
    const std::int64_t present = session_.Tables.TbLog->RecordCount();
    if (SizeOf(file) / kUsualRecord <= kTimesAsMany * present) return;
    database_.PutOffIndexes("Log");
    if (present > 0) return;
    origins_.LogIsEmpty();
    database_.PutOffIndexes("LogOrigine");
  }

  // A contact that can be stored but for its time refuses itself.
  void Store(const AdifRecord& record, MappedRecord& mapped, ImportCounts& counts) {
    const Placement placement = repeated_.Find(mapped.contact);
    if (placement.kind == Placement::Kind::kFull) {
      mapped.refusal = kNoSecondFree;
      return;
    }
    if (placement.kind == Placement::Kind::kRepeated) {
      ++counts.repeated;
      if (options_.fillEmptyColumns && Fill(record, mapped)) ++counts.completed;
      return;
    }
    const base::DateTime told = mapped.contact.DataQso;
    const bool moved = SecondOf(told) != placement.second;
    mapped.contact.DataQso = AtSecond(told, placement.second);
    MapRest(record, ColumnFields(mapped.contact, tables_), mapped);
    if (moved) {
      KeepTime(mapped, tables_.Times().ToUtc(told));
      ++counts.moved;
      report_ << fmt::format(
          "Spostato, riga {}, {}: alle {} c'è già un altro modo, salvato alle {}\r\n\r\n",
          record.line, mapped.contact.Call, base::TimeText(told),
          base::TimeText(mapped.contact.DataQso));
    }
    const std::string uuid = origins_.UuidOf(record);
    const std::int64_t station = origins_.StationOf(record, mapped.contact.DataQso);
    const core::ContactCards cards = TakeCards(record, mapped.contact, mapped.kept);
    const std::int64_t qsoNr = new_.Append(mapped.contact, {uuid, station});
    kept_.Add(qsoNr, mapped.kept);
    for (const core::CardSide side : kCardSides) cards_.Add(qsoNr, side, cards.Of(side));
    KeepEntity(*beside_, qsoNr, mapped);
    repeated_.Stored(mapped.contact);
    ++counts.fresh;
    if (counts.bands.size() < kMostBands) counts.bands.insert(mapped.contact.Banda);
  }

 private:
  static constexpr std::size_t kMostBands = 100;

  bool Fill(const AdifRecord& record, MappedRecord& mapped) {
    MapRest(record, ColumnFields(mapped.contact, tables_), mapped);
    const core::ContactCards cards = TakeCards(record, mapped.contact, mapped.kept);
    engine::Table& row = repeated_.Row();
    const core::LogContact present = core::ReadContact(row);
    const std::int64_t qsoNr = row.Field("QsoNr").Integer();
    const auto empty = ColumnsToFill(present, mapped.contact);
    if (!empty.empty()) {
      contacts_.Change(core::ContactTable::kLog, row, [&](engine::EditableRecordset& filled) {
        for (const core::LogColumn* column : empty) {
          core::WriteColumn(filled, mapped.contact, *column);
        }
      });
    }
    const std::vector<AdifField> missing = kept_.MissingOf(qsoNr, mapped.kept);
    for (const AdifField& field : missing) contacts_.Past().KeepField(qsoNr, field.name);
    kept_.Add(qsoNr, missing);
    const bool gotCards = FillCards(qsoNr, cards);
    const bool gotCountry = FillCountry(qsoNr, mapped.country);
    return !missing.empty() || !empty.empty() || gotCards || gotCountry;
  }

  // The first file that has told it counts.
  bool FillCountry(std::int64_t qsoNr, const std::optional<int>& told) {
    if (!told || core::EntityKeptOf(database_, qsoNr).told) return false;
    contacts_.Past().KeepTold(qsoNr);
    core::KeepToldEntity(database_, qsoNr, told);
    return true;
  }

  // Of a side where the contact has none yet.
  bool FillCards(std::int64_t qsoNr, const core::ContactCards& cards) {
    const core::ContactCards present = cards_.Of(qsoNr);
    bool filled = false;
    for (const core::CardSide side : kCardSides) {
      if (cards.Of(side).empty() || !present.Of(side).empty()) continue;
      contacts_.Past().KeepCards(qsoNr, side);
      cards_.Add(qsoNr, side, cards.Of(side));
      filled = true;
    }
    return filled;
  }

  ImportOptions options_;
  StationTables& tables_;
  std::ostream& report_;
  core::Session& session_;
  engine::Database& database_;
  KeptFields kept_;
  core::CardTable cards_;
  RepeatedInLog repeated_;
  RecordOrigins origins_;
  std::unique_ptr<engine::RowAppender> beside_;  // by whom new contacts have their countries
  core::ContactDoor& contacts_;
  core::ContactDoor::Appender new_;
};

// The words of a refusal without what stands in the record: "data non valida: 20011301".
void CountReason(ImportPreview& preview, std::string_view refusal) {
  constexpr std::size_t kMostReasons = 20;
  const std::string reason(refusal.substr(0, refusal.find(':')));
  auto& reasons = preview.reasons;
  const bool full = reasons.size() >= kMostReasons && !reasons.contains(reason);
  ++reasons[full ? "altri motivi" : reason];
}

void KeepRepairs(ImportPreview& preview, const AdifRecord& record) {
  if (record.repairs.empty()) return;
  preview.counts.repairs += static_cast<std::int64_t>(record.repairs.size());
  if (preview.firstRepairs.size() >= kFirstRepairs) return;
  for (RepairedField& each : RepairsOf(record)) preview.firstRepairs.push_back(std::move(each));
}

void Widen(ImportPreview& preview, base::DateTime time) {
  if (!preview.first || time < *preview.first) preview.first = time;
  if (!preview.last || time > *preview.last) preview.last = time;
}

// None when it was stopped: then nothing is stored.
std::optional<ImportCounts> StoreAll(core::Session& session, const std::filesystem::path& file,
                                     const ImportOptions& options, const ImportProgress& progress,
                                     std::ostream& report) {
  LogFile log(file);
  StationTables tables(session);
  ContactWriter writer(session, options, tables, report);
  ImportCounts counts;
  AdifRecord record;
  MappedRecord mapped;
  core::Transaction transaction(session);
  writer.MakeIndexesBehind(file);
  while (log.Records().Next(record)) {
    if (++counts.read % kProgressStep == 0 && !progress(log.Records().BytesRead())) {
      return std::nullopt;
    }
    MapColumns(record, options.qsl, tables, mapped);
    if (mapped.refusal.empty()) {
      counts.repairs += static_cast<std::int64_t>(record.repairs.size());
      ReportRepairs(report, record);
      writer.Store(record, mapped, counts);
    }
    if (!mapped.refusal.empty()) {
      ++counts.refused;
      ReportRefusal(report, log.Records(), record, mapped.refusal);
    }
  }
  ReportCounts(report, counts);
  if (!report.flush()) throw std::runtime_error("Il rapporto dell'importazione non si scrive");
  try {
    const engine::Watched watched(session.Db, [&] { return progress(log.Records().BytesRead()); });
    transaction.Commit();
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kStopped) throw;
    return std::nullopt;
  }
  return counts;
}

}  // namespace

std::int64_t SizeOf(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

std::optional<ImportPreview> PreviewImport(core::Session& session,
                                           const std::filesystem::path& file,
                                           const QslChoice& choice,
                                           const ImportProgress& progress) {
  LogFile log(file);
  StationTables tables(session);
  RepeatedInLog inLog(session);
  RepeatedInFile inFile;
  PlacedContacts first;
  ImportPreview preview;
  ImportCounts& counts = preview.counts;
  AdifRecord record;
  MappedRecord mapped;
  while (log.Records().Next(record)) {
    if (++counts.read % kProgressStep == 0 && !progress(log.Records().BytesRead())) {
      return std::nullopt;
    }
    MapColumns(record, choice, tables, mapped);
    const bool isFirst = preview.firstRecords.size() < kFirstRecords;
    Placement placement;
    if (!mapped.refusal.empty()) {
      ++counts.refused;
      if (!record.fault.empty()) ++preview.damaged;
      CountReason(preview, mapped.refusal);
    } else {
      KeepRepairs(preview, record);
      Widen(preview, mapped.contact.DataQso);
      ++preview.bands[mapped.contact.Banda];
      ++preview.modes[mapped.contact.Modo];
      placement = inLog.Find(mapped.contact);
      if (placement.kind == Placement::Kind::kRepeated) {
        ++counts.repeated;
      } else {
        ++counts.fresh;
        inFile.Add(mapped.contact, inLog.InMinuteFound());
        if (isFirst) {
          const std::uint64_t key = RepeatedInFile::KeyOf(mapped.contact);
          for (const InMinute& each : inLog.InMinuteFound()) first.Put(key, each);
          placement = first.Place(key, InMinuteOf(mapped.contact));
        }
      }
    }
    if (isFirst) preview.firstRecords.push_back({record, placement});
  }
  const RepeatedInFile::Counts again = inFile.Count();
  counts.fresh -= again.repeated + again.full;
  counts.repeated += again.repeated;
  counts.refused += again.full;
  counts.moved = again.moved;
  if (again.full > 0) preview.reasons[std::string(kNoSecondFree)] += again.full;
  preview.endsEarly = log.Records().EndsEarly();
  return preview;
}

std::optional<ImportCounts> ImportContacts(core::Session& session,
                                           const std::filesystem::path& file,
                                           const ImportOptions& options,
                                           const ImportProgress& progress, std::ostream& report) {
  std::optional<ImportCounts> counts;
  session.Contacts.ChangeMany("Importa ADIF: " + file.filename().string(),
                              {core::ContactTable::kLog}, [&] {
                                counts = StoreAll(session, file, options, progress, report);
                                return counts.has_value();
                              });
  return counts;
}

}  // namespace brenvo::adif
