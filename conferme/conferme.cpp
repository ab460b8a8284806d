#include "conferme/conferme.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "adif/dxcc_entities.h"
#include "adif/export_keys.h"
#include "base/number.h"
#include "base/text.h"
#include "conferme/open_rows.h"
#include "conferme/paper_cards.h"
#include "core/log_time.h"
#include "core/open_in_log.h"
#include "window_words.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kFiles = "*.adi *.adif *.json *.txt *.ADI *.ADIF";
constexpr std::string_view kReport = "\\Conferme.txt";

struct StateFacts {
  std::string_view letter, name;
};
constexpr StateFacts kStates[] = {
    {"D", "dubbio"},   {"N", "non nel log"}, {"C", "credito senza Qso"},
    {"I", "ignorato"}, {"R", "rifiutato"},   {"X", "in contrasto"}};
constexpr std::string_view kIgnored = "I", kRefused = "R", kContradicts = "X";
constexpr int kContradictions = 6;  // their place in the list of states
constexpr std::string_view kAllOfThem = "Tutti", kAllButIgnored = "Da vedere";

std::string_view NameOfState(std::string_view letter) {
  for (const StateFacts& each : kStates) {
    if (each.letter == letter) return each.name;
  }
  return letter;
}

// Its code; the number of one that nobody knows.
std::string CountryOf(const ReportRecord& record) {
  if (record.dxcc == 0) return {};
  const adif::DxccEntity* const entity = adif::FindDxccEntity(record.dxcc);
  return entity == nullptr ? std::to_string(record.dxcc) : std::string(entity->country);
}

const core::Choice& ChoiceOf(Service service) {
  switch (service) {
    case Service::kLotw:
      return core::choice::kLotwGivesBox;
    case Service::kEqsl:
      return core::choice::kEqslGivesBox;
    case Service::kQrz:
      return core::choice::kQrzGivesBox;
    case Service::kClubLog:
      break;
  }
  return core::choice::kClubLogGivesBox;
}

}  // namespace

Conferme::Conferme(core::Session& session, const Addresses& addresses)
    : core::TableWindow(session, "Conferme", "Conferme", base::Twips(14400), base::Twips(8100)),
      signing_(session),
      download_(session, addresses),
      upload_(session, addresses) {
  ShowCommands({&cmLeggi, &cmAbbina, &cmIgnora, &cmApri, forms::Separator{}, &cmScarica, &cmInvia,
                &cmFerma, forms::Separator{}, &cmPrepara, &cmTqsl});
  DefaultCommand = &cmAbbina;
  std::vector<std::string> services = {std::string(kAllOfThem)};
  for (const ServiceFacts& each : Services()) services.emplace_back(each.name);
  Servizio.SetItems(services);
  Servizio.SetListIndex(0);
  std::vector<std::string> states = {std::string(kAllButIgnored)};
  for (const StateFacts& each : kStates) states.emplace_back(each.name);
  Stadio.SetItems(states);
  Stadio.SetListIndex(0);
  Servizio.OnChange = Stadio.OnChange = SoloDubbi.OnChange = [this] { FillTable(); };
  changed_ = session.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kLog && change.Many()) Renew();
  });
  reopened_ = session.Reopened.Subscribe([this] { Renew(); });
}

void Conferme::Load() {
  core::TableWindow::Load();
  ShowTable(rows_, {"Servizio", "Stadio", "Call", "Data", "Banda", "Modo", "Country", "Motivo",
                    "Candidati", "Crediti"});
  Renew();
  Say("F5 legge un rapporto");
}

void Conferme::Renew() {
  open_ = OpenRecords(session_);
  std::ranges::move(RefusedContacts(session_), std::back_inserter(open_));
  hasContradictions_ = false;
  FillTable();
  ShowStages();
}

bool Conferme::IsWanted(const OpenRecord& open) const {
  const int service = Servizio.ListIndex(), state = Stadio.ListIndex();
  if (service > 0 && static_cast<int>(open.record.service) != service - 1) return false;
  if (SoloDubbi.IsOn() && open.state != kStates[0].letter) return false;
  if (state <= 0) return open.state != kIgnored && open.state != kContradicts;
  return open.state == kStates[static_cast<std::size_t>(state - 1)].letter;
}

void Conferme::FillTable() {
  const auto key = ChosenKey();
  if (Stadio.ListIndex() == kContradictions && !std::exchange(hasContradictions_, true)) {
    std::ranges::move(Contradictions(session_), std::back_inserter(open_));
  }
  std::vector<core::KeyedRows::Keyed> rows;
  for (const OpenRecord& open : open_) {
    if (!IsWanted(open)) continue;
    const ReportRecord& record = open.record;
    rows.push_back(
        {open.number,
         {std::string(FactsOf(record.service).name), std::string(NameOfState(open.state)),
          record.call, record.hasDay ? base::DateTimeText(record.when) : "", record.band,
          record.submode.empty() ? record.mode : record.submode, CountryOf(record), open.why,
          open.candidates.empty() ? "" : std::to_string(open.candidates.size()), record.credits}});
  }
  rows_.SetKeyed(std::move(rows));
  ShowRows(key);
  ShowCandidates();
}

void Conferme::ShowStages() {
  std::string text;
  for (const Stages& each : StagesOf(session_)) {
    if (each.sent == 0 && each.confirmed == 0 && each.refused == 0) continue;
    if (!text.empty()) text += '\n';
    text += fmt::format("{}: da inviare {}, inviati {}", FactsOf(each.service).name,
                        Number(each.toSend), Number(each.sent));
    if (each.refused > 0) text += fmt::format(", rifiutati {}", Number(each.refused));
    if (each.service == Service::kLotw) text += fmt::format(", accolti {}", Number(each.accepted));
    text += fmt::format(", confermati {}", Number(each.confirmed));
    if (each.service == Service::kLotw) {
      text += fmt::format(", accreditati {}", Number(each.credited));
    }
    if (each.late > 0) {
      text += fmt::format("; da più di {} giorni senza conferma {}", kLateDays, Number(each.late));
    }
  }
  Stadi.SetText(text.empty() ? "Nessun servizio ha ancora confermato un contatto" : text);
}

const OpenRecord* Conferme::Chosen() {
  const auto key = ChosenKey();
  if (!key) return nullptr;
  const auto at = std::ranges::find(open_, *key, &OpenRecord::number);
  return at == open_.end() ? nullptr : &*at;
}

void Conferme::RowChosen() { ShowCandidates(); }

void Conferme::ShowCandidates() {
  const OpenRecord* const chosen = Chosen();
  std::vector<std::string> items;
  listed_.clear();
  if (chosen != nullptr) {
    // A credit that no contact of its day has may belong to one like it.
    const bool alone = chosen->record.credit && chosen->candidates.empty();
    for (const std::int64_t key :
         alone ? SimilarTo(session_, chosen->record) : chosen->candidates) {
      const auto row = session_.Db.OpenSnapshot(
          fmt::format("select DataQso,Call,Banda,Modo from Log where QsoNr={}", key));
      if (row->EOF_()) continue;
      listed_.push_back(key);
      items.push_back(fmt::format("{}: {} {} {} {}", key, base::Trim(row->Field(1).Text()),
                                  row->Field(std::size_t{0}).Text(),
                                  base::Trim(row->Field(2).Text()),
                                  base::Trim(row->Field(3).Text())));
    }
  }
  Candidati.SetItems(items);
  Candidati.SetListIndex(items.empty() ? -1 : 0);
  Candidati.SetEnabled(!items.empty());
  QsoNr.SetText("");
  QsoNr.SetEnabled(chosen != nullptr);
}

std::optional<std::int64_t> Conferme::CandidateChosen() {
  if (const std::string written = base::Trim(QsoNr.Text()); !written.empty()) {
    std::int64_t number = 0;
    const auto [end, error] =
        std::from_chars(written.data(), written.data() + written.size(), number);
    const bool whole = error == std::errc() && end == written.data() + written.size();
    return whole && number > 0 ? std::optional(number) : std::nullopt;
  }
  const int at = Candidati.ListIndex();
  if (at < 0 || at >= std::ssize(listed_)) return std::nullopt;
  return listed_[static_cast<std::size_t>(at)];
}

void Conferme::ReadFile() {
  const auto file = session_.Machine.PickFile(kTitle, kFiles);
  if (!file) return;
  const forms::BusyPointer busy(Host());
  try {
    TakeFile(*file);
  } catch (const engine::DatabaseError& failure) {
    // All of it or nothing: what was there stands.
    session_.Messages().Show(platform::MessageIcon::kCritical, kTitle,
                             fmt::format("Le conferme non si registrano: {}", failure.Description));
  } catch (const std::runtime_error& failure) {
    session_.Messages().Show(platform::MessageIcon::kCritical, kTitle, failure.what());
  }
}

void Conferme::TakeFile(const std::filesystem::path& file) {
  std::optional<Report> report;
  {
    const auto progress = session_.Machine.ShowProgress("Lettura del rapporto", SizeOf(file));
    report = ReadReportFile(file, [&](std::int64_t done) { return progress->Advance(done); });
  }
  const std::string name = file.filename().string();
  asked_.clear();
  if (!report) return Say(kNothingChanged);
  if (Take(*report, name, fmt::format("Conferme: {}", name), {})) OfferCards(*report, name);
}

bool Conferme::Take(Report& taken, const std::string& name, const std::string& title,
                    const Mark& mark) {
  const Report* const report = &taken;
  std::optional<MatchedReport> matched;
  {
    const auto contacts = session_.Db.OpenSnapshot("select count(*) from Log");
    const auto progress = session_.Machine.ShowProgress("Abbinamento al log",
                                                        contacts->Field(std::size_t{0}).Integer());
    matched = MatchLog(session_, report->records,
                       [&](std::int64_t done) { return progress->Advance(done); });
  }
  if (!matched) {
    Say(kNothingChanged);
    return false;
  }
  // Of several reports that were asked for together, one behind the other.
  std::ofstream told(session_.File(kReport),
                     std::ios::binary | (asked_.empty() ? std::ios::trunc : std::ios::app));
  told << fmt::format("Conferme del {}\r\nFile: {} ({}), {} record\r\n\r\n",
                      base::DateTimeText(session_.Now()), name, NameOf(report->kind), report->read);
  for (const std::string& fault : report->faults) told << "Saltato, " << fault << "\r\n";
  const TakenCounts counts = TakeReport(session_, title, *report, *matched, told, mark);
  told.flush();
  Renew();
  std::string said =
      fmt::format("{}: record {}, abbinati {}, Qso cambiati {}", NameOf(report->kind),
                  Number(report->read), Number(counts.matched), Number(counts.changed));
  const auto add = [&](std::int64_t count, std::string_view what) {
    if (count > 0) said += fmt::format(", {} {}", what, Number(count));
  };
  add(counts.filled, "campi riempiti");
  add(counts.conflicts, "in contrasto");
  add(counts.doubtful, "dubbi");
  add(counts.unmatched, "non nel log");
  add(counts.credits, "crediti senza Qso");
  add(counts.ignored, "ignorati");
  add(report->silent, "senza conferma");
  add(report->faulty, "saltati");
  if (matched->foreign > 0) {
    said += fmt::format("; di {}, che non è tra le stazioni: {}", matched->foreignCall,
                        Number(matched->foreign));
  }
  said += told ? "; il resoconto è in Conferme.txt" : "; il resoconto non si scrive";
  Say(said);
  return true;
}

void Conferme::OfferCards(const Report& report, const std::string& name) {
  if (report.cards.empty()) return;
  const bool paper = session_.Messages().AskYesNo(
      kTitle,
      fmt::format("Il file dice anche di {} Qsl ricevute (QSL_RCVD). Sono cartoline di carta ?",
                  Number(std::ssize(report.cards))));
  if (!paper) return;
  const std::string said = Avviso.Text();
  const std::int64_t taken = TakeCards(session_, fmt::format("Cartoline: {}", name), report);
  Renew();
  Say(fmt::format("{}; cartoline registrate {}", said, Number(taken)));
}

void Conferme::MatchChosen() {
  const OpenRecord* const chosen = Chosen();
  if (chosen == nullptr) return;
  const auto key = CandidateChosen();
  if (!key) {
    Say(QsoNr.Text().empty() ? "Il record non ha candidati: scrivere il numero del Qso"
                             : "Il numero del Qso non è un numero");
    Host().MoveFocus(QsoNr);
    return;
  }
  const std::string call = chosen->record.call;
  if (chosen->state == kContradicts) {
    return Say("Il Qso è abbinato: F8 lo apre nel log, che non cambia da solo");
  }
  if (chosen->state == kRefused) {
    return Say("Il servizio non ha preso il Qso: correggerlo, o F7 per inviarlo di nuovo");
  }
  if (!MatchByHand(session_, chosen->number, *key)) {
    Say(fmt::format("Il Qso {} non c'è, o ha già un record di quel servizio", *key));
    return;
  }
  Renew();
  Say(fmt::format("{} abbinato al Qso {}", call, *key));
}

void Conferme::IgnoreChosen() {
  const OpenRecord* const chosen = Chosen();
  if (chosen == nullptr) return;
  const std::string call = chosen->record.call;
  if (chosen->state == kRefused) {
    ForgetRefusal(session_, chosen->record.service, chosen->candidates.front());
    Renew();
    return Say(call + " si invia di nuovo");
  }
  if (chosen->state == kContradicts) {
    return Say("Un contrasto resta finché il log e il servizio non dicono lo stesso");
  }
  const bool ignored = chosen->state == kIgnored;
  Ignore(session_, {chosen->number}, !ignored);
  Renew();
  Say(call + (ignored ? " si guarda di nuovo al prossimo rapporto" : " ignorato"));
}

void Conferme::OpenCandidate() {
  if (const auto key = CandidateChosen()) core::OpenInLog(session_, *key);
}

void Conferme::WriteUnsent() {
  const ServiceFacts& facts = Services()[static_cast<std::size_t>(Servizio.ListIndex() - 1)];
  if (!core::AskLogTime(session_)) return;
  const std::vector<std::int64_t> keys = UnsentTo(session_, facts.service);
  if (keys.empty()) {
    Say(fmt::format("Nessun Qso da inviare a {}", facts.name));
    return;
  }
  const auto file =
      session_.Machine.PickNewFile("File da inviare", "*.adi", fmt::format("{}.adi", facts.name));
  if (!file) return;
  std::optional<adif::ExportCounts> counts;
  try {
    const forms::BusyPointer busy(Host());
    const auto progress = session_.Machine.ShowProgress("File da inviare", std::ssize(keys));
    counts = adif::ExportKeys(session_, keys, *file,
                              [&](std::int64_t done) { return progress->Advance(done); });
  } catch (const engine::DatabaseError&) {
    throw;
  } catch (const std::runtime_error& failure) {
    session_.Messages().Show(platform::MessageIcon::kCritical, kTitle, failure.what());
    return;
  }
  if (!counts) {
    Say("Interrotto: il file non è stato scritto");
    return;
  }
  const std::string written =
      fmt::format("{} Qso in {}", Number(counts->written), file->filename().string());
  const bool sent = session_.Messages().AskYesNo(
      kTitle, fmt::format("{}. Segnarli come inviati a {} ?", written, facts.name));
  if (sent) MarkSent(session_, facts.service, keys);
  Say(written + (sent ? ", segnati come inviati" : ", non segnati"));
}

void Conferme::SignAndSend() {
  if (!core::AskLogTime(session_)) return;
  signing_.Send([this](const std::string& told) { Say(told); });
  if (signing_.IsAtWork()) Say("tqsl firma e invia...");
}

BoxKeeper::BoxKeeper(core::Session& session)
    : changed_(session.Choices.Changed.Subscribe([&session](const core::Choice& choice) {
        for (const ServiceFacts& each : Services()) {
          if (&choice == &ChoiceOf(each.service)) FollowBoxChoice(session, each.service);
        }
      })) {}

}  // namespace brenvo::conferme
