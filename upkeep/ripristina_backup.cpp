#include "upkeep/ripristina_backup.h"

#include <fmt/format.h>

#include "core/window_place.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kSettingsKey = "RipristinaBackup";

}  // namespace

RipristinaBackup::RipristinaBackup(core::Session& session)
    : forms::Window(session.Host(), "RipristinaBackup", "Ripristina backup", base::Twips(7200),
                    base::Twips(5400)),
      session_(session) {
  LBCopie.PicksOnEnter = true;
  LBCopie.OnDoubleClick = [this] { Choose(); };
  DefaultCommand = &cmRipristina;
  CancelCommand = &cmExit;
}

void RipristinaBackup::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  const forms::BusyPointer busy(Host());
  copies_ = BackupCopies(session_.AppPath);
  const auto count = static_cast<std::int64_t>(copies_.size());
  const auto progress = session_.Machine.ShowProgress("Lettura delle copie", count);
  // Copies that nobody wants to wait for can be put back uncounted.
  for (std::int64_t i = 0; i < count; ++i) {
    const BackupCopy& copy = copies_[static_cast<std::size_t>(i)];
    LBCopie.AddItem(progress->Advance(i) ? fmt::format("{}   {}", TitleOf(copy), ContentsOf(copy))
                                         : TitleOf(copy));
  }
  if (copies_.empty()) {
    StatusBar1.SetPanel(1, "Non ci sono ancora copie");
  } else {
    LBCopie.SetListIndex(0);
  }
}

void RipristinaBackup::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

void RipristinaBackup::Choose() {
  const int index = LBCopie.ListIndex();
  if (index < 0) return;
  const BackupCopy& copy = copies_[static_cast<std::size_t>(index)];
  const std::string question = fmt::format(
      "La copia {} ({}) prende il posto del database, che viene messo da parte.\n"
      "Confermi l'operazione ?",
      TitleOf(copy), ContentsOf(copy));
  if (!session_.Messages().AskYesNo("Ripristina backup", question)) return;
  Chosen = copy;
  Hide();
}

}  // namespace brenvo::upkeep
