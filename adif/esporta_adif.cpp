#include "adif/esporta_adif.h"

#include <fmt/format.h>

#include "adif_export.h"
#include "core/shared_windows.h"
#include "core/window_place.h"

namespace brenvo::adif {
namespace {

constexpr std::string_view kTitle = "Esporta ADIF";
constexpr std::string_view kFiles = "*.adi";
constexpr std::string_view kSection = "EsportaAdif";
constexpr std::string_view kSuggested = "Brenvo.adi";

}  // namespace

EsportaAdif::EsportaAdif(core::Session& session)
    : forms::Window(session.Host(), "EsportaAdif", "Esporta ADIF", base::Twips(6000),
                    base::Twips(3900)),
      session_(session) {
  DefaultCommand = &cmEsporta;
  CancelCommand = &cmExit;
}

void EsportaAdif::Load() {
  core::RestoreWindow(session_, *this, kSection);
  Lettere.SetIndex(session_.GetSetting(kSection, "Lettere", "UTF-8") == "ASCII" ? 1 : 0);
  Contatti.SetEnabled(session_.Opened.CurrentLogForm != nullptr);
  StatusBar1.SetPanel(1, session_.Opened.CurrentLogForm != nullptr
                             ? ""
                             : "La finestra Log è chiusa: si esporta tutto il log");
}

void EsportaAdif::Unload() { core::SaveWindow(session_, *this, kSection); }

std::string EsportaAdif::Selection() const {
  const core::LogWindow* log = session_.Opened.CurrentLogForm;
  if (Contatti.Index() == 0 || log == nullptr) return std::string(kAllContacts);
  return log->Selection;
}

void EsportaAdif::Export() {
  const auto file = session_.Machine.PickNewFile(kTitle, kFiles, kSuggested);
  if (!file) return;
  std::optional<ExportCounts> counts;
  const std::string select = Selection();
  const bool ascii = Lettere.Index() == 1;
  session_.SaveSetting(kSection, "Lettere", ascii ? "ASCII" : "UTF-8");
  try {
    const forms::BusyPointer busy(Host());
    const auto progress =
        session_.Machine.ShowProgress("Esportazione", session_.Tables.TbLog->RecordCount());
    counts = ExportContacts(
        session_, select, *file, [&](std::int64_t done) { return progress->Advance(done); },
        ascii ? AdifLetters::kAscii : AdifLetters::kUtf8);
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, kTitle);
  } catch (const std::runtime_error& failure) {
    session_.Messages().Show(platform::MessageIcon::kCritical, kTitle, failure.what());
    return;
  }
  if (!counts) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, kTitle,
                             "Esportazione interrotta: il file non è stato scritto.");
    return;
  }
  std::string text =
      fmt::format("Contatti esportati nel file {}: {}", file->filename().string(), counts->written);
  if (counts->leftOut > 0) {
    text += fmt::format("\nContatti senza nominativo o data validi, non esportati: {}",
                        counts->leftOut);
  }
  if (ascii) {
    text += fmt::format("\nLettere cambiate per l'ASCII: {}, in {} contatti", counts->changed,
                        counts->changedContacts);
  }
  session_.Messages().Show(platform::MessageIcon::kInformation, kTitle, text);
  Close();
}

}  // namespace brenvo::adif
