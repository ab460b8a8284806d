#include "upkeep/converti_ora.h"

#include <fmt/format.h>

#include "core/log_time.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kTitle = "Converti ora";

std::string_view WordsOf(DoubtfulTime::Kind kind) {
  switch (kind) {
    case DoubtfulTime::Kind::kTwice:
      return "ora che c'è due volte";
    case DoubtfulTime::Kind::kMissing:
      return "ora che non c'è";
    case DoubtfulTime::Kind::kMoved:
      break;
  }
  return "ora che non c'è, spostata";
}

// Goes through `work` under the eyes of who waits.
template <class Work>
auto Watched(core::Session& session, std::string_view title, Work work) {
  const forms::BusyPointer busy(session.Host());
  const auto progress = session.Machine.ShowProgress(title, session.Tables.TbLog->RecordCount());
  return work([&](std::int64_t done) { return progress->Advance(done); });
}

}  // namespace

ConvertiOra::ConvertiOra(core::Session& session)
    : core::TableWindow(session, "ConvertiOra", "Converti ora", base::Twips(10800),
                        base::Twips(6600)) {
  Qso.ReadOnly = Periodo.ReadOnly = true;
  ShowCommands({&cmCambia, &cmConverti});
  DefaultCommand = &cmCambia;
}

void ConvertiOra::Load() {
  core::TableWindow::Load();
  Spiegazione.SetText(
      "Le ore del log diventano UTC, tutte insieme. Le schede dei contest restano come sono.");
  ShowTable(rows_, {"Che cosa", "Ora locale", "Ora UTC", "Call", "Banda"});
  plan_ = Watched(session_, "Lettura del log", [this](const ConversionProgress& progress) {
    return PlanConversion(session_, progress);
  });
  ShowPlan();
  if (!plan_) Say("Lettura interrotta: non si converte niente.");
}

std::vector<core::MemoryRows::Row> ConvertiOra::RowsOfPlan() const {
  std::vector<core::MemoryRows::Row> rows;
  if (!plan_) return rows;
  for (const DoubtfulTime& each : plan_->doubtful) {
    rows.push_back({std::string(WordsOf(each.kind)), base::DateTimeText(each.local),
                    base::DateTimeText(each.utc), each.call, each.banda});
  }
  return rows;
}

void ConvertiOra::ShowPlan() {
  rows_.SetRows(RowsOfPlan());
  ShowRows(std::nullopt);
  if (!plan_) return;
  Qso.SetText(std::to_string(plan_->contacts));
  if (plan_->first) {
    Periodo.SetText(fmt::format("dal {} al {}", base::DateTimeText(*plan_->first),
                                base::DateTimeText(*plan_->last)));
  }
  Say(plan_->doubtful.empty() ? "Nessun Qso ha un'ora dubbia."
                              : fmt::format("Qso con un'ora dubbia, per il cambio dell'ora: {}",
                                            plan_->doubtful.size()));
}

bool ConvertiOra::HasOther() {
  const auto key = ChosenKey();
  return key && plan_ && plan_->doubtful[static_cast<std::size_t>(*key)].other.has_value();
}

void ConvertiOra::TakeOther() {
  const auto key = ChosenKey();
  DoubtfulTime& doubt = plan_->doubtful[static_cast<std::size_t>(*key)];
  std::swap(doubt.utc, *doubt.other);
  rows_.SetRows(RowsOfPlan());
  ShowRows(key);
  Say(fmt::format("{}, {}: sono le {} UTC", doubt.call, base::DateTimeText(doubt.local),
                  base::TimeText(doubt.utc)));
}

void ConvertiOra::Convert() {
  if (!session_.Messages().AskYesNo(
          kTitle, fmt::format("Le ore di {} Qso diventano UTC.\nConfermi l'operazione ?",
                              plan_->contacts))) {
    return;
  }
  const bool whole = Watched(session_, kTitle, [this](const ConversionProgress& progress) {
    return ConvertLog(session_, *plan_, progress);
  });
  if (!whole) {
    Say("Conversione interrotta: il log è rimasto com'era.");
    return;
  }
  const std::string done = fmt::format("Ore convertite in UTC: {} Qso.", plan_->contacts);
  plan_.reset();
  ShowPlan();
  Say(done);
}

void ConvertiOraDelLog(core::Session& session) {
  const auto time = core::AskLogTime(session);
  if (!time) return;
  if (*time == core::LogTime::kUtc) {
    session.Messages().Show(platform::MessageIcon::kInformation, kTitle, "Il log è già in UTC.");
    return;
  }
  session.Windows.ShowModal(*session.Windows.LoadSingle("ConvertiOra"));
}

}  // namespace brenvo::upkeep
