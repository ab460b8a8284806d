#include "list/elenco.h"

#include <fmt/format.h>

#include <algorithm>

#include "adif/export_keys.h"
#include "base/text.h"
#include "change_column.h"
#include "contact_rows.h"
#include "core/log_time.h"
#include "core/open_in_log.h"
#include "core/shared_windows.h"
#include "list/cambia_colonna.h"
#include "list/conta_qso.h"
#include "sheet.h"

namespace brenvo::list {
namespace {

constexpr std::string_view kYes = "Sì", kNo = "No";  // as the list shows a column

}  // namespace

Elenco::Elenco(core::Session& session)
    : core::ArrangedWindow(session, "Elenco", "Elenco dei contatti", base::Twips(17400),
                           base::Twips(9600)),
      rows_(std::make_unique<ContactRows>(session)),
      stored_(
          session, [this](const std::vector<core::OneContact>& changes) { Follow(changes); },
          [this] { ReadAnew(); }) {
  ShowCommands({&cmApri, &cmCambia, &menuQsl, &menuEsporta, &cmConta, &menuMostra});
  DefaultCommand = &cmApri;
  closing_ = session.Closing.Subscribe([this] { rows_->Close(); });
  reopened_ = session.Reopened.Subscribe([this] { ReadAnew(); });
}

Elenco::~Elenco() = default;

void Elenco::Load() {
  core::ArrangedWindow::Load();
  rows_->AddKept(KeptHeadings());  // those that are none of the columns are fields of log files
  rows_->Open(std::nullopt);
  ArrangeTable(*rows_, TableColumnsOf(rows_->Columns()));
}

void Elenco::Unload() {
  core::ArrangedWindow::Unload();
  rows_->Close();
}

void Elenco::ShowSelection(std::string_view title, std::vector<std::int64_t> keys) {
  Titolo.SetText(title);
  ForgetArrangement();
  rows_->Open(std::move(keys));
  ShowRows(std::nullopt);
}

void Elenco::ShowWholeLog() {
  const auto key = ChosenKey();
  Titolo.SetText("");
  rows_->Open(std::nullopt);
  ShowRows(key);
}

void Elenco::BeforeChoosing() {
  rows_->AddAllKept();
  SetColumns(TableColumnsOf(rows_->Columns()));
}

void Elenco::ShowMarked() {
  std::vector<std::int64_t> keys = MarkedKeys();
  const std::string title = fmt::format("{} Qso segnati", keys.size());
  ShowSelection(title, std::move(keys));
}

void Elenco::ShowSelectionOfLog() {
  const core::LogWindow* log = session_.Opened.CurrentLogForm;
  if (log == nullptr) return;
  const forms::BusyPointer busy(Host());
  std::vector<std::int64_t> keys;
  for (const auto rows = session_.Db.OpenSnapshot(log->Selection); !rows->EOF_();
       rows->MoveNext()) {
    keys.push_back(rows->Field(core::column::kQsoNr).Integer());
  }
  ShowSelection("Selezione della finestra Log", std::move(keys));
}

// The row keeps its mark; where its contact is gone, the next one has it.
void Elenco::Follow(const std::vector<core::OneContact>& changes) {
  const std::int64_t row = Tabella.Row();
  auto key = ChosenKey();
  for (const core::OneContact& each : changes) {
    if (key && !each.after && each.before->key == *key) {
      const std::int64_t next = row < rows_->RowCount() ? row : row - 2;
      key = next >= 0 ? std::optional(rows_->KeyAt(next)) : std::nullopt;
    }
    rows_->Follow(each);
  }
  ShowRows(key);
}

void Elenco::ReadAnew() {
  const auto key = ChosenKey();
  rows_->ReadAnew();
  ShowRows(key);
}

void Elenco::Activate() { stored_.TellNow(); }

void Elenco::OpenInLog() {
  if (const auto key = ChosenKey()) core::OpenInLog(session_, *key);
}

void Elenco::ChangeColumnOfMarked() {
  if (!session_.Windows.Knows("CambiaColonna")) return;
  auto& dialog = static_cast<CambiaColonna&>(*session_.Windows.LoadSingle("CambiaColonna"));
  dialog.Give(*rows_, MarkedKeys());
  session_.Windows.ShowModal(dialog);
  if (dialog.Done()) Say(*dialog.Done());
}

// On for all, or off where all have it.
void Elenco::SetFlag(std::string_view name) {
  const core::LogColumn& column = core::LogColumnOf(name);
  const std::vector<std::int64_t> keys = MarkedKeys();
  if (keys.empty()) return;
  std::vector<std::int64_t> changing = rows_->WithOther(column, keys, kYes);
  const bool on = !changing.empty();
  if (!on) changing = keys;
  const std::string what = fmt::format("{}: {}", name, on ? kYes : kNo);
  if (ChangeColumn(session_, what, changing, column, on) == Changed::kAll) {
    Say(fmt::format("{} in {} Qso", what, changing.size()));
  }
}

void Elenco::CountMarked() {
  if (!session_.Windows.Knows("ContaQso")) return;
  auto& dialog = static_cast<ContaQso&>(*session_.Windows.LoadSingle("ContaQso"));
  const int column = std::max(Tabella.Column(), 0);
  dialog.Give(*rows_, MarkedOrShownKeys(), ShownColumns().at(static_cast<std::size_t>(column)));
  session_.Windows.ShowModal(dialog);
  if (dialog.Chosen()) SetFilter(dialog.Chosen()->first, dialog.Chosen()->second);
}

Sheet Elenco::SheetOf(const std::vector<std::int64_t>& keys) {
  Sheet sheet{Titolo.Text().empty() ? Caption() : Titolo.Text(), {}, keys, rows_->Cells()};
  for (const std::size_t field : ShownColumns()) sheet.columns.push_back(rows_->Columns()[field]);
  return sheet;
}

void Elenco::Export(std::string_view what, std::string_view ending,
                    const std::function<std::optional<std::string>(
                        const std::filesystem::path& file, const std::vector<std::int64_t>& keys,
                        const std::function<bool(std::int64_t done)>& progress)>& write) {
  const std::vector<std::int64_t> keys = MarkedOrShownKeys();
  auto file = session_.Machine.PickNewFile(what, fmt::format("*{}", ending),
                                           fmt::format("Elenco{}", ending));
  if (!file) return;
  // A name picked by mistake costs no file of another kind.
  if (base::Lower(file->extension().string()) != ending) *file += ending;
  try {
    const forms::BusyPointer busy(Host());
    const auto shown = session_.Machine.ShowProgress(what, std::ssize(keys));
    const auto done = write(*file, keys, [&](std::int64_t rows) { return shown->Advance(rows); });
    Say(done ? *done : "Esportazione interrotta: il file non è stato scritto");
  } catch (const engine::DatabaseError&) {
    throw;
  } catch (const std::runtime_error& failure) {
    session_.Messages().Show(platform::MessageIcon::kCritical, what, failure.what());
  }
}

void Elenco::ExportAdif() {
  if (!core::AskLogTime(session_)) return;
  Export("Esporta ADIF", ".adi",
         [this](const auto& file, const auto& keys,
                const auto& progress) -> std::optional<std::string> {
           const auto counts = adif::ExportKeys(session_, keys, file, progress);
           if (!counts) return std::nullopt;
           std::string text =
               fmt::format("Scritti {} Qso in {}", counts->written, file.filename().string());
           if (counts->leftOut > 0) {
             text += fmt::format("; {} senza nominativo o data validi lasciati", counts->leftOut);
           }
           return text;
         });
}

void Elenco::ExportCsv() {
  Export("Esporta CSV", ".csv",
         [this](const auto& file, const auto& keys,
                const auto& progress) -> std::optional<std::string> {
           if (!WriteCsv(SheetOf(keys), file, progress)) return std::nullopt;
           return fmt::format("Scritti {} Qso in {}", keys.size(), file.filename().string());
         });
}

void Elenco::ExportXlsx() {
  Export("Esporta foglio di calcolo", ".xlsx",
         [this](const auto& file, const auto& keys,
                const auto& progress) -> std::optional<std::string> {
           if (!WriteXlsx(SheetOf(keys), session_.Now(), file, progress)) return std::nullopt;
           return fmt::format("Scritti {} Qso in {}", keys.size(), file.filename().string());
         });
}

void Elenco::Print() {
  const std::vector<std::int64_t> keys = MarkedOrShownKeys();
  const forms::BusyPointer busy(Host());
  auto shown = session_.Machine.ShowProgress("Stampa dell'elenco", std::ssize(keys));
  const bool whole = PrintSheet(SheetOf(keys), session_.Machine.GetPrinter(),
                                [&](std::int64_t rows) { return shown->Advance(rows); });
  Say(whole ? fmt::format("Stampati {} Qso", keys.size()) : "Stampa interrotta");
}

void ShowInElenco(core::Session& session, std::string_view title, std::vector<std::int64_t> keys) {
  auto* window = static_cast<Elenco*>(session.Windows.LoadSingle("Elenco"));
  if (window == nullptr) return;
  window->ShowSelection(title, std::move(keys));
  session.Windows.Show(*window);
}

}  // namespace brenvo::list
