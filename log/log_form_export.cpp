// The log's ADIF file.
#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "log/log_form.h"
#include "log_adi.h"

namespace brenvo::log {
namespace {

constexpr std::string_view kKeepQuestion =
    "Alcuni Qso sono gia' presenti nel file per BV, vuoi lasciarli ?";

std::ofstream OpenToAppend(const std::filesystem::path& file) {
  std::ofstream out(file, std::ios::binary | std::ios::app);
  if (!out) throw std::runtime_error("Il file " + file.filename().string() + " non si apre");
  return out;
}

}  // namespace

void LogForm::ExportThisQso() {
  Export("Esporta questo Qso", [this](std::ostream& out) {
    ReturnFromExport();
    if (DsLog->EOF_() || DsLog->BOF()) return;
    AdifWriter writer(*DsLog);
    out << writer.Contact();
    TellUndated(writer.Undated());
  });
}

void LogForm::ExportAllQso() {
  Export("Esporta tutti i Qso", [this](std::ostream& out) {
    if (DsLog->RecordCount() == 0) return;
    if (!DsLog->EOF_()) beforeExport_ = DsLog->GetBookmark();
    AdifWriter writer(*DsLog);
    for (DsLog->MoveFirst(); !DsLog->EOF_(); DsLog->MoveNext()) out << writer.Contact();
    TellUndated(writer.Undated());
  });
}

void LogForm::TellUndated(int contacts) {
  if (contacts == 0) return;
  StatusBar1.SetPanel(
      1, fmt::format("Esportati senza data, che nel database non è leggibile: {}", contacts));
}

void LogForm::Export(std::string_view title, const std::function<void(std::ostream&)>& write) {
  const std::filesystem::path file = session_.File("\\Log.ADI");
  OpenToAppend(file).close();
  if (!session_.Messages().AskYesNo(title, kKeepQuestion)) std::filesystem::remove(file);
  const forms::BusyPointer busy(Host());
  std::ofstream out = OpenToAppend(file);
  try {
    write(out);
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, title);
  }
  out.close();
  if (!out) throw std::runtime_error("Il file " + file.filename().string() + " non si scrive");
}

}  // namespace brenvo::log
