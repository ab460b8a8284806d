#include "links/dx_dialog.h"

#include "base/text.h"
#include "core/entry.h"

namespace brenvo::links {

DxDialog::DxDialog(core::Session& session)
    : forms::Window(session.Host(), "DX", "DX announcement", base::Twips(4500), base::Twips(2400)) {
  Frequenza.Filter = core::NumericKey;
  CallQso.Filter = core::UpperKey;
  DefaultCommand = &cmInvia;
  CancelCommand = &cmCancel;
}

void DxDialog::Finish() {
  if (core::IsEmptyField(Frequenza.Text()) || core::IsEmptyField(CallQso.Text())) return;
  Tag = "DX " + Frequenza.Text() + " " + CallQso.Text();
  if (!core::IsEmptyField(Note.Text())) Tag += " " + base::Trim(Note.Text());
  Hide();
}

void DxDialog::Cancel() {
  Tag = kCancelled;
  Hide();
}

}  // namespace brenvo::links
