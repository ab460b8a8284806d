// What becomes of the contest: its check, its files, and the way into the log.
#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "base/number.h"
#include "base/text.h"
#include "call_file.h"
#include "call_list.h"
#include "contest_log.h"
#include "core/call_forms.h"
#include "core/log_time.h"
#include "core/quoted.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "gara/gara_contest.h"
#include "read_bytes.h"

namespace brenvo::gara {
namespace {

std::string_view WeightText(Weight weight) {
  constexpr std::string_view kTexts[] = {"Errore", "Avviso", "Nota"};
  return kTexts[static_cast<std::size_t>(weight)];
}

}  // namespace

// All of them by time, or those of one band by their serials.
std::vector<LogRow> GaraContest::Rows(std::string_view band) const {
  std::vector<LogRow> rows;
  for (std::size_t i = 0; i < qsos_.size(); ++i) {
    if (!band.empty() && qsos_[i].contact.band != band) continue;
    rows.push_back({qsos_[i].contact, count_->Worths()[i]});
  }
  if (!band.empty()) {
    std::ranges::stable_sort(rows, {}, [](const LogRow& row) { return row.contact.serialSent; });
  }
  return rows;
}

LogHead GaraContest::Head(std::string_view band) {
  LogHead head;
  head.contest = entry_->name;
  head.begin = entry_->begin.DatePart();
  head.end = entry_->end.Later(-1).DatePart();
  head.call = entry_->call;
  head.locator = entry_->locator;
  head.exchange = Wants(PartKind::kProvince) || Wants(PartKind::kOwn) ? entry_->exchange : "";
  head.category = entry_->category;
  head.mail = entry_->mail;
  head.ownCall = base::Trim(core::ProfileText(session_, "Call"));
  head.name = base::Trim(core::ProfileText(session_, "Qra"));
  head.street = base::Trim(core::ProfileText(session_, "Indirizzo"));
  head.city = base::Trim(core::ProfileText(session_, "Qth"));
  // The rest is what the header of the contest on that band says.
  const std::string name = BandInLog(session_, band);
  const auto row = session_.Db.OpenSnapshot(
      fmt::format("Select * from Contest where DataContest=DateValue({}) and Banda={}",
                  core::Quoted(base::DateText(entry_->Day())), core::Quoted(name)));
  if (row->EOF_()) return head;
  const auto text = [&](std::string_view column) {
    return base::Trim(core::FieldText(*row, column));
  };
  const auto number = [&](std::string_view column) {
    const double value = row->Field(column).Number();
    return value == 0 ? std::string() : base::PlainNumber(value);
  };
  head.name = text("Qra");
  head.street = text("Indirizzo");
  head.city = text("Qth");
  head.address1 = text("SQth");
  head.transmitter = head.receiver = text("RTX");
  head.antenna = text("Antenna");
  head.power = number("Potenza");
  head.above = number("Altezza");
  if (const std::string note = text("Note"); !note.empty()) head.remarks.push_back(note);
  return head;
}

std::vector<Finding> GaraContest::Check() {
  std::vector<LogRow> rows = Rows("");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    // As they are stored: the check counts by itself.
    rows[i].worth.points = qsos_[i].worth.points;
    if (!qsos_[i].worth.duplicateOf) rows[i].worth.duplicateOf.reset();
    if (qsos_[i].worth.duplicateOf && !rows[i].worth.duplicateOf) rows[i].worth.duplicateOf = 0;
  }
  const LogHead head = Head(rows.empty() ? Banda.Text() : rows.front().contact.band);
  const auto findings =
      CheckLog({rule_,
                head,
                Own(),
                {entry_->begin, entry_->end},
                session_.Machine.GetClock().UtcNow(),
                rows,
                count_->Total().total,
                [this](std::string_view call) {
                  std::vector<std::string> locators;
                  for (const core::PlaceOfCall& each : PlacesOf(call, true)) {
                    locators.push_back(each.locator);
                  }
                  return locators;
                },
                [this](std::string_view call) {
                  constexpr std::size_t kMost = 3;
                  const CallList& known = KnownCalls();
                  if (known.Contains(core::BaseCall(call)) || known.Contains(call)) {
                    return std::vector<std::string>();
                  }
                  return known.Near(core::BaseCall(call), kMost);
                }});
  ShowFindings(findings);
  const auto count = [&](Weight weight) {
    return std::ranges::count(findings, weight, &Finding::weight);
  };
  Say(fmt::format("Verifica: errori {}, avvisi {}, note {}", count(Weight::kError),
                  count(Weight::kWarning), count(Weight::kHint)));
  return findings;
}

void GaraContest::ShowFindings(const std::vector<Finding>& findings) {
  std::vector<core::MemoryRows::Row> rows;
  findingKeys_.clear();
  for (const Finding& each : findings) {
    std::string which;
    std::optional<std::int64_t> key;
    if (each.row && *each.row < qsos_.size()) {
      const Contact& contact = qsos_[*each.row].contact;
      which = fmt::format("{} {} {}", contact.band, contact.serialSent, contact.call);
      key = KeyOf(contact);
    }
    rows.push_back({std::string(WeightText(each.weight)), which, each.text});
    findingKeys_.push_back(key);
  }
  const bool any = !rows.empty();
  findingRows_.SetRows(std::move(rows));
  Verifiche.SetCurrent(any ? 1 : 0, 0);
  Verifiche.ContentChanged();
}

void GaraContest::GoToFinding() {
  const std::int64_t row = Verifiche.Row();
  if (row < 1 || row > std::ssize(findingKeys_)) return;
  const auto key = findingKeys_[static_cast<std::size_t>(row - 1)];
  if (!key) return Say("Questa riga dice di tutto il log");
  ShowRows(key);
  TakeUp(*key);
}

void GaraContest::Export(LogFormat format) {
  KeepEntry();
  const std::vector<Finding> findings = Check();
  if (!rule_.IsComplete()) {
    return Say("Le regole sono da completare: si può provare, ma il log non si scrive");
  }
  if (format != rule_.format) {
    return Say(fmt::format("Lo sponsor vuole il log {}",
                           rule_.format == LogFormat::kEdi ? "EDI" : "Cabrillo"));
  }
  const auto errors = std::ranges::count(findings, Weight::kError, &Finding::weight);
  if (errors > 0 &&
      !session_.Messages().AskYesNo("Contest", fmt::format("Nel log ci sono {} errori. Scriverlo "
                                                           "lo stesso ?",
                                                           errors))) {
    return Say(fmt::format("Log non scritto: errori {}", errors));
  }
  std::vector<Finding> all = findings;
  std::string files;
  const auto write = [&](const std::string& name, const WrittenLog& log) {
    WriteBytesTo(session_.File("\\" + name), log.bytes);
    files += (files.empty() ? "" : ", ") + name;
    for (const WrittenOtherwise& each : log.changes) {
      all.push_back({Weight::kHint,
                     {},
                     fmt::format("{}, {}: \"{}\" è scritto \"{}\"", name, each.field, each.before,
                                 each.after)});
    }
  };
  if (format == LogFormat::kEdi) {
    for (const BandScore& band : count_->Total().bands) {
      const LogHead head = Head(band.band);
      write(LogFileName(rule_, head, band.band), WriteEdi(rule_, head, band.band, Rows(band.band)));
    }
  } else {
    const std::string band = qsos_.empty() ? Banda.Text() : qsos_.front().contact.band;
    const LogHead head = Head(band);
    write(LogFileName(rule_, head, ""),
          WriteCabrillo(rule_, head, Rows(""), count_->Total().total));
  }
  ShowFindings(all);
  Say(files.empty() ? std::string("Non c'è nessun QSO da scrivere")
                    : fmt::format("Scritto {}{}", files,
                                  rule_.sendTo.empty() ? "" : ": si manda a " + rule_.sendTo));
}

void GaraContest::Import() {
  const auto file = session_.Machine.PickFile("Importa EDI", "*.edi *.EDI *.log *.LOG *.cbr *.txt");
  if (!file) return;
  const auto bytes = ReadBytesOf(*file, kMostLogBytes);
  if (!bytes) return Say(fmt::format("Il file {} non si legge", file->filename().string()));
  const ReadContestLog log = ReadLogFile(*bytes);
  std::set<std::pair<std::string, std::int64_t>> taken;
  std::set<std::tuple<std::string, std::string, std::int64_t>> there;
  for (const StoredQso& each : qsos_) {
    taken.emplace(each.contact.band, each.contact.serialSent);
    there.emplace(each.contact.band, each.contact.call, each.contact.time.Seconds() / 60);
  }
  std::vector<StoredQso> fresh;
  std::vector<Finding> findings;
  std::int64_t known = 0;
  const auto tell = [&](int line, std::string text) {
    findings.push_back({Weight::kWarning,
                        {},
                        line == 0 ? std::move(text) : fmt::format("riga {}: {}", line, text)});
  };
  for (const ReadNote& note : log.notes) tell(note.line, note.text);
  std::set<std::string> refusedBands;
  for (const ReadContact& each : log.contacts) {
    StoredQso qso;
    qso.contact = each.contact;
    Contact& contact = qso.contact;
    if (contact.mode.empty()) contact.mode = Modo.Text();
    if (std::ranges::find(rule_.bands, contact.band) == rule_.bands.end()) {
      tell(each.line, fmt::format("la banda {} non è del contest", contact.band));
      continue;
    }
    if (const std::string why = WhyNoBand(session_, entry_->number, entry_->begin, contact.band);
        !why.empty()) {
      if (refusedBands.insert(contact.band).second) tell(each.line, why);
      continue;
    }
    if (!there.emplace(contact.band, contact.call, contact.time.Seconds() / 60).second) {
      ++known;
      continue;
    }
    if (contact.serialSent == 0) {
      contact.serialSent = NextSerial(contact.band);
      serials_[contact.band] = contact.serialSent;
    }
    if (!taken.emplace(contact.band, contact.serialSent).second) {
      tell(each.line, fmt::format("QSO con {} non importato: il progressivo {} c'è già",
                                  contact.call, contact.serialSent));
      continue;
    }
    serials_[contact.band] = std::max(serials_[contact.band], contact.serialSent);
    contact.place = PlaceOf(contact);
    fresh.push_back(std::move(qso));
  }
  // What the rules give each is known once all stand in their order.
  std::vector<StoredQso> all = qsos_;
  all.insert(all.end(), fresh.begin(), fresh.end());
  std::ranges::stable_sort(all, {}, [](const StoredQso& each) { return each.contact.time; });
  Count counted(rule_, Own());
  std::map<std::int64_t, Worth> worths;
  for (const StoredQso& each : all) worths[KeyOf(each.contact)] = counted.Add(each.contact);
  for (StoredQso& each : fresh) each.worth = worths[KeyOf(each.contact)];
  storing_ = true;
  try {
    StoreQsos(session_, put_, *entry_, "Log di contest importato", fresh);
  } catch (...) {
    storing_ = false;
    Reload();
    throw;
  }
  storing_ = false;
  Reload();
  ShowFindings(findings);
  Say(fmt::format("Letti {} QSO: importati {}, già presenti {}, avvisi {}", log.contacts.size(),
                  fresh.size(), known, findings.size()));
}

void GaraContest::ExportAdif() {
  std::string name = entry_->name;
  for (char& c : name) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (!isPlain) c = '-';
  }
  name = fmt::format("{}_{}.adi", name, entry_->begin.Year());
  const std::vector<LogRow> rows = Rows("");
  if (rows.empty()) return Say("Non c'è nessun QSO da scrivere");
  WriteBytesTo(session_.File("\\" + name), WriteAdif(rule_, Head(rows.front().contact.band), rows));
  Say(fmt::format("Scritto {}: {} QSO", name, rows.size()));
}

void GaraContest::LearnFile() {
  const auto file = session_.Machine.PickFile(
      "Impara nominativi", "*.edi *.EDI *.log *.cbr *.adi *.ADI *.txt *.TXT *.scp *.SCP *.csv");
  if (!file) return;
  const auto bytes = ReadBytesOf(*file, kMostCallFileBytes);
  if (!bytes) return Say(fmt::format("Il file {} non si legge", file->filename().string()));
  const ReadCallFile read = ReadCallFileBytes(*bytes);
  const core::LearnedCalls learned = core::LearnCalls(session_, read.calls);
  known_.reset();
  lookedUp_.reset();
  std::vector<Finding> findings;
  for (const ReadNote& note : read.notes) {
    findings.push_back(
        {Weight::kHint,
         {},
         note.line == 0 ? note.text : fmt::format("riga {}: {}", note.line, note.text)});
  }
  ShowFindings(findings);
  ShowStatus();
  std::string said =
      fmt::format("{}, {}: {} righe, nominativi nuovi {}, già conosciuti {}, osservazioni {}",
                  file->filename().string(), read.kind, read.lines, learned.fresh, learned.known,
                  read.notes.size());
  if (learned.beyond > 0) said += fmt::format(", senza più posto {}", learned.beyond);
  if (learned.stopped) said += ", interrotto";
  Say(said);
}

void GaraContest::Transfer() {
  if (!core::AskLogTime(session_)) return;
  const Transferred counts = TransferToLog(session_, *entry_, rule_, qsos_);
  Reload();
  Say(fmt::format("Nel log: nuovi {}, già presenti {}", counts.fresh, counts.known));
}

}  // namespace brenvo::gara
