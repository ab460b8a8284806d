#include "conferme/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <memory>

#include "adif/adif_names.h"
#include "adif/adif_reader.h"
#include "adif/adif_values.h"
#include "base/text.h"
#include "club_log.h"
#include "qrz_answer.h"
#include "record_reading.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kKinds[] = {"rapporto LoTW", "crediti LoTW",       "posta eQSL",
                                       "logbook QRZ",   "riscontri Club Log", "file ADIF"};
constexpr std::size_t kFirst = std::size_t{1} << 16, kLast = 512;
constexpr std::int64_t kRecordsPerLook = 500;

// Bytes as they come, the first ones known before the rest is read and the last ones afterwards.
class WatchedSource {
 public:
  explicit WatchedSource(ReportSource source) : source_(std::move(source)) {
    first_.resize(kFirst);
    std::size_t filled = 0;
    while (filled < kFirst) {
      const std::size_t got = source_(first_.data() + filled, kFirst - filled);
      if (got == 0) break;
      filled += got;
    }
    first_.resize(filled);
  }
  std::string_view First() const { return first_; }
  std::string_view Last() const { return last_; }
  std::size_t Read(char* buffer, std::size_t size) {
    std::size_t got = 0;
    if (given_ < first_.size()) {
      got = std::min(size, first_.size() - given_);
      std::copy_n(first_.data() + given_, got, buffer);
      given_ += got;
    } else {
      got = source_(buffer, size);
    }
    last_.append(buffer, got);
    if (last_.size() > kLast) last_.erase(0, last_.size() - kLast);
    return got;
  }

 private:
  ReportSource source_;
  std::string first_, last_;
  std::size_t given_ = 0;
};

bool Holds(std::string_view text, std::string_view what) {
  return base::UpperAscii(text).find(base::UpperAscii(what)) != std::string::npos;
}

std::string_view WithoutMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t at = text.find_first_not_of(" \t\r\n");
  return at == text.npos ? std::string_view() : text.substr(at);
}

void RequireNoPage(std::string_view first) {
  if (Holds(first, "Username/password incorrect")) {
    throw LoginError("LoTW non ha accettato nome o parola d'ordine; nulla è cambiato");
  }
  if (Holds(first, "No such Username/Password found")) {
    throw LoginError("eQSL non ha accettato nome o parola d'ordine; nulla è cambiato");
  }
  const std::string beginning = base::UpperAscii(WithoutMark(first).substr(0, 100));
  if (beginning.starts_with("<!DOCTYPE") || beginning.starts_with("<HTML")) {
    throw ReportError(
        "Il file è una pagina HTML e non un rapporto: il servizio ha risposto altro; nulla è "
        "cambiato");
  }
}

int Whole(const adif::AdifRecord& record, std::string_view name, int most) {
  const std::string* const text = record.Find(name);
  if (text == nullptr) return 0;
  int number = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
  const bool whole = error == std::errc() && end == text->data() + text->size();
  return whole && number > 0 && number <= most ? number : 0;
}

std::string Text(const adif::AdifRecord& record, std::string_view name) {
  const std::string* const text = record.Find(name);
  return text == nullptr ? std::string() : *text;
}

bool Says(const adif::AdifRecord& record, std::string_view name, std::string_view value) {
  const std::string* const text = record.Find(name);
  return text != nullptr && base::SameText(*text, value);
}

// "CT // Connecticut": LoTW explains some values behind them.
std::string WithoutRemark(std::string text) {
  text.resize(std::min(text.find("//"), text.size()));
  return base::Trim(text);
}

constexpr int kMostZoneCq = 40, kMostZoneItu = 90, kMostDxcc = 999;

class RecordReader {
 public:
  RecordReader(Report& report, RecordKeeper& keeper) : report_(report), keeper_(keeper) {}

  void Read(const adif::AdifRecord& record) {
    ++report_.read;
    if (!record.fault.empty()) return keeper_.Fault(record.line, record.fault);
    switch (report_.kind) {
      case ReportKind::kLotw:
        return ReadLotw(record);
      case ReportKind::kLotwCredits:
        return ReadCredit(record);
      case ReportKind::kEqsl:
        return ReadEqsl(record);
      default:
        return ReadAny(record);
    }
  }

 private:
  static ReportRecord Common(const adif::AdifRecord& record, Service service) {
    ReportRecord read;
    read.service = service;
    read.line = record.line;
    read.call = Text(record, "CALL");
    read.ownCall = Text(record, "STATION_CALLSIGN");
    if (read.ownCall.empty()) read.ownCall = Text(record, "APP_LOTW_OWNCALL");
    if (const adif::AdifBand* band = adif::FindAdifBand(Text(record, "BAND"))) {
      read.band = band->name;
    } else if (const auto frequency = adif::NumberIn(Text(record, "FREQ"))) {
      const adif::AdifBand* at = adif::AdifBandAt(base::Mhz(*frequency));
      if (at != nullptr) read.band = at->name;
    }
    read.mode = base::UpperAscii(Text(record, "MODE"));
    if (read.mode.empty()) read.mode = base::UpperAscii(Text(record, "APP_LOTW_MODE"));
    read.submode = base::UpperAscii(Text(record, "SUBMODE"));
    read.modeGroup = base::UpperAscii(Text(record, "APP_LOTW_MODEGROUP"));
    read.satellite = base::UpperAscii(Text(record, "SAT_NAME"));
    read.bySatellite = Says(record, "PROP_MODE", "SAT") || !read.satellite.empty();
    if (const auto day = adif::DateIn(Text(record, "QSO_DATE"))) {
      read.hasDay = true;
      read.when = *day;
      const std::string time = Text(record, "TIME_ON");
      if (const auto at = adif::TimeIn(time)) {
        read.hasTime = true;
        read.hasSeconds =
            std::ranges::count_if(time, [](char c) { return c >= '0' && c <= '9'; }) >= 6;
        read.when = read.when + *at;
      }
    }
    return read;
  }

  static void ReadPlace(const adif::AdifRecord& record, ReportRecord& read) {
    read.locator = base::UpperAscii(Text(record, "GRIDSQUARE"));
    if (read.locator.empty()) read.locator = base::UpperAscii(Text(record, "VUCC_GRIDS"));
    if (!IsLocator(read.locator)) read.locator.clear();
    read.state = base::UpperAscii(WithoutRemark(Text(record, "STATE")));
    read.iota = base::UpperAscii(WithoutRemark(Text(record, "IOTA")));
    read.zoneCq = Whole(record, "CQZ", kMostZoneCq);
    read.zoneItu = Whole(record, "ITUZ", kMostZoneItu);
    read.dxcc = Whole(record, "DXCC", kMostDxcc);
    if (Says(record, "APP_LOTW_CQZ_INFERRED", "Y")) read.inferred = "CQ";
    if (Says(record, "APP_LOTW_ITUZ_INFERRED", "Y")) {
      read.inferred += read.inferred.empty() ? "ITU" : " ITU";
    }
  }

  // One locator, or those that meet at a corner: "JN65,JN66".
  static bool IsLocator(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    if (text.size() < 4 || text.size() > kLongest) return false;
    while (!text.empty()) {
      const std::size_t end = std::min(text.find(','), text.size());
      const std::string piece = base::Trim(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
      const auto is = [&](std::size_t at, char from, char to) {
        return piece[at] >= from && piece[at] <= to;
      };
      if (piece.size() < 4 || !is(0, 'A', 'R') || !is(1, 'A', 'R') || !is(2, '0', '9') ||
          !is(3, '0', '9')) {
        return false;
      }
    }
    return true;
  }

  void ReadLotw(const adif::AdifRecord& record) {
    ReportRecord read = Common(record, Service::kLotw);
    read.confirmed = Says(record, "QSL_RCVD", "Y");
    if (read.confirmed) read.day = adif::DateIn(Text(record, "QSLRDATE"));
    read.credits = WithoutRemark(Text(record, "CREDIT_GRANTED"));
    if (read.credits.empty()) read.credits = WithoutRemark(Text(record, "APP_LOTW_CREDIT_GRANTED"));
    read.partnerMode = base::UpperAscii(Text(record, "APP_LOTW_QSLMODE"));
    if (read.confirmed) ReadPlace(record, read);
    keeper_.Take(std::move(read));
  }

  void ReadCredit(const adif::AdifRecord& record) {
    ReportRecord read = Common(record, Service::kLotw);
    read.credit = true;
    read.credits = WithoutRemark(Text(record, "CREDIT_GRANTED"));
    read.dxcc = Whole(record, "DXCC", kMostDxcc);
    read.modeGroup = read.modeGroup.empty() ? read.mode : read.modeGroup;
    if (read.credits.empty()) {
      ++report_.silent;
      return;
    }
    keeper_.Take(std::move(read));
  }

  void ReadEqsl(const adif::AdifRecord& record) {
    // A listener's report is no contact.
    if (Says(record, "APP_EQSL_SWL", "Y") || Says(record, "QSL_SENT", "N")) {
      ++report_.silent;
      return;
    }
    ReportRecord read = Common(record, Service::kEqsl);
    read.day = adif::DateIn(Text(record, "EQSL_QSLRDATE"));
    read.authentic = Says(record, "APP_EQSL_AG", "Y") || Says(record, "EQSL_AG", "Y");
    ReadPlace(record, read);
    keeper_.Take(std::move(read));
  }

  // What each service has confirmed, by the fields of a contact.
  void ReadAny(const adif::AdifRecord& record) {
    bool told = false;
    for (const ServiceFacts& facts : Services()) {
      const bool confirmed = Says(record, facts.received, facts.value) ||
                             (facts.value == "Y" && Says(record, facts.received, "V"));
      if (!confirmed) continue;
      ReportRecord read = Common(record, facts.service);
      if (!facts.day.empty()) read.day = adif::DateIn(Text(record, facts.day));
      if (facts.service == Service::kLotw) {
        read.credits = WithoutRemark(Text(record, "CREDIT_GRANTED"));
      }
      read.authentic = facts.service == Service::kEqsl && Says(record, "EQSL_AG", "Y");
      if (facts.service == Service::kQrz) {
        const std::string id = Text(record, "APP_QRZLOG_LOGID");
        if (!id.empty()) read.id = "LOGID " + id;
      }
      keeper_.Take(std::move(read));
      told = true;
    }
    if (!told) ++report_.silent;
    if (report_.kind == ReportKind::kAdif) ReadCard(record);
  }

  void ReadCard(const adif::AdifRecord& record) {
    if (!Says(record, "QSL_RCVD", "Y") && !Says(record, "QSL_RCVD", "V")) return;
    const std::string way = base::UpperAscii(base::Trim(Text(record, "QSL_RCVD_VIA")));
    if (way == "E") return;
    ReportRecord read = Common(record, Service::kLotw);
    read.day = adif::DateIn(Text(record, "QSLRDATE"));
    cardKeeper_.Take(std::move(read));
    if (cards_.records.empty()) return;
    report_.cards.push_back(std::move(cards_.records.front()));
    report_.cardWays.push_back(way);
    cards_.records.clear();
    if (report_.cards.size() > kMostRecords) {
      throw ReportError(fmt::format("Il file ha più di {} cartoline", kMostRecords));
    }
  }

  Report& report_;
  RecordKeeper& keeper_;
  // A card that cannot be understood was told with its record.
  Report cards_;
  RecordKeeper cardKeeper_{cards_};
};

std::string HeaderOf(const adif::AdifReader& reader, std::string_view name) {
  for (const adif::AdifField& field : reader.Header()) {
    if (field.name == name) return field.value;
  }
  return {};
}

ReportKind KindOf(const adif::AdifReader& reader, std::string_view first, bool ofQrz,
                  const adif::AdifRecord* record) {
  const std::string program = base::UpperAscii(HeaderOf(reader, "PROGRAMID"));
  if (program.find("LOTW") != std::string::npos) {
    return program.find("QSLCARDS") != std::string::npos ? ReportKind::kLotwCredits
                                                         : ReportKind::kLotw;
  }
  if (program.starts_with("EQSL") || Holds(first.substr(0, kLast), "Received eQSLs")) {
    return ReportKind::kEqsl;
  }
  const bool hasLogId = record != nullptr && record->Find("APP_QRZLOG_LOGID") != nullptr;
  return ofQrz || hasLogId ? ReportKind::kQrz : ReportKind::kAdif;
}

void RequireWhole(const Report& report, const adif::AdifReader& reader, std::string_view last,
                  std::optional<std::int64_t> told) {
  const bool lotw = report.kind == ReportKind::kLotw;
  if (lotw ? !Holds(last, "<APP_LoTW_EOF>") : reader.EndsEarly()) {
    throw ReportError(fmt::format("Il {} è troncato: finisce dopo {} record; nulla è cambiato",
                                  NameOf(report.kind), report.read));
  }
  if (lotw) {
    const std::string text = HeaderOf(reader, "APP_LOTW_NUMREC");
    std::int64_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc()) told = count;
  }
  if (told && *told != report.read) {
    throw ReportError(
        fmt::format("Il {} dice di avere {} record e ne ha {}: non è intero; nulla è cambiato",
                    NameOf(report.kind), *told, report.read));
  }
}

std::optional<Report> ReadRecords(WatchedSource& source, const ReportProgress& progress) {
  const bool ofQrz = QrzAnswer::Is(WithoutMark(source.First()));
  std::optional<QrzAnswer> answer;
  const auto bytes = [&](char* buffer, std::size_t size) { return source.Read(buffer, size); };
  if (ofQrz) answer.emplace(bytes);
  adif::AdifReader reader([&](char* buffer, std::size_t size) {
    return answer ? answer->Read(buffer, size) : bytes(buffer, size);
  });
  Report report;
  RecordKeeper keeper(report);
  RecordReader records(report, keeper);
  adif::AdifRecord record;
  for (bool first = true; reader.Next(record); first = false) {
    // Behind the last record some services set a mark of their own.
    if (record.fields.empty() && reader.EndsEarly()) break;
    if (first) report.kind = KindOf(reader, source.First(), ofQrz, &record);
    records.Read(record);
    if (report.read % kRecordsPerLook == 0 && progress && !progress(reader.BytesRead())) {
      return std::nullopt;
    }
  }
  if (report.read == 0) report.kind = KindOf(reader, source.First(), ofQrz, nullptr);
  if (report.read == 0 && report.kind == ReportKind::kAdif && reader.Header().empty()) {
    throw ReportError("Il file non ha record ADIF; nulla è cambiato");
  }
  RequireWhole(report, reader, source.Last(), answer ? answer->Count() : std::nullopt);
  report.lastConfirmed = HeaderOf(reader, "APP_LOTW_LASTQSL");
  report.lastAccepted = HeaderOf(reader, "APP_LOTW_LASTQSORX");
  return report;
}

}  // namespace

std::string_view NameOf(ReportKind kind) { return kKinds[static_cast<std::size_t>(kind)]; }

std::optional<Report> ReadReport(ReportSource source, const ReportProgress& progress) {
  WatchedSource watched(std::move(source));
  RequireNoPage(watched.First());
  const std::string_view first = WithoutMark(watched.First());
  if (first.empty()) throw ReportError("Il file è vuoto; nulla è cambiato");
  if (first.front() != '[' && first.front() != '{') {
    const std::string other =
        QrzAnswer::Is(first) ? std::string() : adif::OtherThanAdif(watched.First());
    if (!other.empty()) {
      throw ReportError(fmt::format("Non è un rapporto: è {}; nulla è cambiato", other));
    }
    return ReadRecords(watched, progress);
  }
  std::string text;
  for (;;) {
    constexpr std::size_t kChunk = std::size_t{1} << 16;
    const std::size_t filled = text.size();
    text.resize(filled + kChunk);
    const std::size_t got = watched.Read(text.data() + filled, kChunk);
    text.resize(filled + got);
    if (got == 0) break;
    if (text.size() > kLargestMatches) {
      throw ReportError("I riscontri di Club Log sono troppi per un file solo; nulla è cambiato");
    }
  }
  Report report;
  report.kind = ReportKind::kClubLog;
  ReadMatches(text, report);
  return report;
}

std::optional<Report> ReadReportFile(const std::filesystem::path& file,
                                     const ReportProgress& progress) {
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    throw ReportError(fmt::format("Il file {} non si apre", file.filename().string()));
  }
  return ReadReport(
      [&](char* buffer, std::size_t size) {
        in.read(buffer, static_cast<std::streamsize>(size));
        if (in.bad()) {
          throw ReportError(fmt::format("Il file {} non si legge", file.filename().string()));
        }
        return static_cast<std::size_t>(in.gcount());
      },
      progress);
}

}  // namespace brenvo::conferme
