#include "adif/importa_adif.h"

#include <fmt/format.h>

#include <fstream>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "core/log_contact.h"
#include "core/window_place.h"
#include "missing_bands.h"

namespace brenvo::adif {
namespace {

constexpr std::string_view kTitle = "Importa ADIF";
constexpr std::string_view kReport = "\\ImportaAdif.txt";
constexpr std::string_view kFiles = "*.adi *.adif *.ADI *.ADIF";
constexpr std::string_view kSection = "ImportaAdif";

constexpr const char* kHeadings[] = {
    "Stato",   "DataQso",     "Call",        "Banda",        "Frequenza",
    "Modo",    "QrkDato",     "QrkRicevuto", "Qra",          "Qth",
    "Locator", "Qrb",         "Prefisso",    "Country",      "Provincia",
    "Zona CQ", "Zona ITU",    "Continente",  "Propagazione", "Potenza",
    "Manager", "QslRicevuta", "QslInviata",  "QslDaInviare", "Note"};
constexpr const char* kRepairHeadings[] = {"Riga",         "Call",  "Campo",
                                           "Lungh. detta", "Letta", "Testo letto"};

std::string Listed(const std::map<std::string, std::int64_t>& counts) {
  std::string text;
  for (const auto& [name, count] : counts) {
    if (!text.empty()) text += ", ";
    text += fmt::format("{}: {}", name.empty() ? "senza" : base::Trim(name), count);
  }
  return text;
}

std::string CellText(const core::LogContact& contact, std::string_view column) {
  for (const core::LogColumn& each : core::LogColumns()) {
    if (each.name != column) continue;
    if (column == core::column::kDataQso) return base::DateTimeText(contact.DataQso);
    if (column == core::column::kFrequenza)
      return base::FormatNumber(contact.Frequenza, "#####.000");
    const std::string text = core::ColumnText(contact, each);
    if (column.starts_with("Qsl")) return text == "Y" ? "Sì" : "No";
    return text;
  }
  return {};
}

void SayFailure(core::Session& session, std::string_view text) {
  session.Messages().Show(platform::MessageIcon::kCritical, kTitle, text);
}

}  // namespace

ImportaAdif::ImportaAdif(core::Session& session)
    : forms::Window(session.Host(), "ImportaAdif", "Importa ADIF", base::Twips(13500),
                    base::Twips(8400)),
      session_(session) {
  for (forms::TextField* field : {&File, &Letti, &Nuovi, &Ripetuti, &Rifiutati, &Periodo, &Bande,
                                  &Modi, &Motivi, &Avvisi, &Spostati, &Riparati}) {
    field->ReadOnly = true;
  }
  DefaultCommand = &cmImporta;
  CancelCommand = &cmExit;
  for (forms::CheckBox* box : {&QslCartacea, &QslLotw, &QslEqsl}) {
    box->OnChange = [this] { ShowFirstRecords(); };
  }
}

void ImportaAdif::Load() {
  core::RestoreWindow(session_, *this, kSection);
  QslCartacea.SetOn(session_.GetSetting(kSection, "QslCartacea", "Y") == "Y");
  QslLotw.SetOn(session_.GetSetting(kSection, "QslLotw", "N") == "Y");
  QslEqsl.SetOn(session_.GetSetting(kSection, "QslEqsl", "N") == "Y");
}

void ImportaAdif::Unload() { core::SaveWindow(session_, *this, kSection); }

QslChoice ImportaAdif::Choice() const {
  return {QslCartacea.IsOn(), QslLotw.IsOn(), QslEqsl.IsOn()};
}

bool ImportaAdif::Preview(const std::filesystem::path& file) {
  file_ = file;
  const forms::BusyPointer busy(Host());
  try {
    const auto progress = session_.Machine.ShowProgress("Lettura del file", SizeOf(file));
    auto preview = PreviewImport(session_, file, Choice(),
                                 [&](std::int64_t done) { return progress->Advance(done); });
    if (!preview) return false;
    preview_ = std::move(*preview);
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, kTitle);
  } catch (const std::runtime_error& failure) {
    SayFailure(session_, failure.what());
    return false;
  }
  ShowPreview();
  return true;
}

void ImportaAdif::ShowPreview() {
  const ImportCounts& counts = preview_.counts;
  File.SetText(file_.filename().string());
  Letti.SetText(std::to_string(counts.read));
  Nuovi.SetText(std::to_string(counts.fresh));
  Ripetuti.SetText(std::to_string(counts.repeated));
  Rifiutati.SetText(std::to_string(counts.refused));
  if (preview_.first) {
    Periodo.SetText(fmt::format("dal {} al {}", base::DateText(*preview_.first),
                                base::DateText(*preview_.last)));
  }
  Bande.SetText(Listed(preview_.bands));
  Modi.SetText(Listed(preview_.modes));
  Motivi.SetText(Listed(preview_.reasons));
  std::string warnings;
  if (preview_.endsEarly) warnings = "Il file finisce a metà di un record. ";
  if (preview_.damaged > 0) warnings += fmt::format("Record danneggiati: {}.", preview_.damaged);
  Avvisi.SetText(base::Trim(warnings));
  Spostati.SetText(std::to_string(counts.moved));
  Riparati.SetText(std::to_string(counts.repairs));
  ShowFirstRecords();
  ShowRepairs();
}

void ImportaAdif::ShowFirstRecords() {
  StationTables tables(session_);
  MappedRecord mapped;
  Anteprima.SetRows(1 + static_cast<std::int64_t>(preview_.firstRecords.size()));
  Anteprima.SetColumns(static_cast<int>(std::size(kHeadings)));
  for (int i = 0; i < Anteprima.Columns(); ++i) Anteprima.SetCell(0, i, kHeadings[i]);
  std::int64_t row = 0;
  for (const FirstRecord& first : preview_.firstRecords) {
    MapColumns(first.record, Choice(), tables, mapped);
    Anteprima.ClearRow(++row);
    const Placement& placement = first.placement;
    if (mapped.refusal.empty() && placement.kind == Placement::Kind::kFull) {
      mapped.refusal = kNoSecondFree;
    }
    if (!mapped.refusal.empty()) {
      Anteprima.SetCell(row, 0, fmt::format("riga {}: {}", first.record.line, mapped.refusal));
      continue;
    }
    const bool repeated = placement.kind == Placement::Kind::kRepeated;
    const bool moved = !repeated && placement.second != SecondOf(mapped.contact.DataQso);
    if (moved) mapped.contact.DataQso = AtSecond(mapped.contact.DataQso, placement.second);
    Anteprima.SetCell(
        row, 0,
        fmt::format("{}{}{}", repeated ? "ripetuto" : "nuovo", moved ? ", spostato" : "",
                    first.record.repairs.empty() ? "" : ", riparato"));
    for (int i = 1; i < Anteprima.Columns(); ++i) {
      Anteprima.SetCell(row, i, CellText(mapped.contact, kHeadings[i]));
    }
  }
  Anteprima.ContentChanged();
}

void ImportaAdif::ShowRepairs() {
  Riparazioni.SetRows(1 + static_cast<std::int64_t>(preview_.firstRepairs.size()));
  Riparazioni.SetColumns(static_cast<int>(std::size(kRepairHeadings)));
  for (int i = 0; i < Riparazioni.Columns(); ++i) Riparazioni.SetCell(0, i, kRepairHeadings[i]);
  std::int64_t row = 0;
  for (const RepairedField& each : preview_.firstRepairs) {
    const std::string cells[] = {
        std::to_string(each.line), each.call, each.name, std::to_string(each.told),
        std::to_string(each.read), each.text};
    ++row;
    for (int i = 0; i < Riparazioni.Columns(); ++i) Riparazioni.SetCell(row, i, cells[i]);
  }
  Riparazioni.ContentChanged();
}

// What cannot be read is not imported, and nothing of such a file is unless the operator says so.
bool ImportaAdif::AgreesToDamage() {
  if (preview_.damaged == 0) return true;
  return session_.Messages().AskYesNo(
      kTitle, fmt::format("{} Importare lo stesso gli altri record ({}) ?", Avvisi.Text(),
                          preview_.counts.read - preview_.counts.refused));
}

void ImportaAdif::Import() {
  if (!AgreesToDamage()) return;
  session_.SaveSetting(kSection, "QslCartacea", QslCartacea.IsOn() ? "Y" : "N");
  session_.SaveSetting(kSection, "QslLotw", QslLotw.IsOn() ? "Y" : "N");
  session_.SaveSetting(kSection, "QslEqsl", QslEqsl.IsOn() ? "Y" : "N");
  std::optional<ImportCounts> counts;
  const std::filesystem::path report = session_.File(kReport);
  try {
    const forms::BusyPointer busy(Host());
    std::ofstream out(report, std::ios::binary | std::ios::trunc);
    if (!out) {
      throw std::runtime_error(
          fmt::format("Il rapporto {} non si scrive", report.filename().string()));
    }
    out << fmt::format("Importazione ADIF del {}\r\nFile: {}\r\n\r\n",
                       base::DateTimeText(session_.Now()), file_.filename().string());
    const auto progress = session_.Machine.ShowProgress("Importazione", SizeOf(file_));
    counts = ImportContacts(
        session_, file_, {Choice(), ContattiRipetuti.Index() == 1},
        [&](std::int64_t done) { return progress->Advance(done); }, out);
    if (!counts) out << "Importazione interrotta: nessun record è stato importato.\r\n";
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, kTitle);
  } catch (const std::runtime_error& failure) {
    SayFailure(session_, failure.what());
    return;
  }
  if (!counts) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, kTitle,
                             "Importazione interrotta: nessun record è stato importato.");
    return;
  }
  std::string text = fmt::format(
      "Record letti: {}\nImportati: {}\nRipetuti: {} (completati: {})\nRifiutati: {}\n",
      counts->read, counts->fresh, counts->repeated, counts->completed, counts->refused);
  if (counts->moved > 0) text += fmt::format("Spostati nel minuto: {}\n", counts->moved);
  if (counts->repairs > 0) text += fmt::format("Campi riparati: {}\n", counts->repairs);
  text += fmt::format("Il rapporto è nel file {}", report.filename().string());
  session_.Messages().Show(platform::MessageIcon::kInformation, kTitle, text);
  OfferBands(session_, kTitle, MissingBands(session_, counts->bands));
  Close();
}

void ImportaFileAdif(core::Session& session) {
  if (!core::AskLogTime(session)) return;
  const auto file = session.Machine.PickFile(kTitle, kFiles);
  if (!file) return;
  auto& window = static_cast<ImportaAdif&>(*session.Windows.LoadNew("ImportaAdif"));
  if (window.Preview(*file)) {
    session.Windows.ShowModal(window);
  } else {
    window.Close();
  }
}

}  // namespace brenvo::adif
