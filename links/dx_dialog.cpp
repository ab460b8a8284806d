#include "links/dx_dialog.h"

#include "base/text.h"
#include "core/modules.h"

namespace brenvo {

DxDialog::DxDialog(Session& session)
    : Window(session.Host(), "DX", "DX announcement", Twips(4500), Twips(2400)) {
  Frequenza.Filter = NumericKey;
  CallQso.Filter = UpperKey;
  DefaultCommand = &cmInvia;
  CancelCommand = &cmCancel;
}

void DxDialog::Finish() {
  if (IsEmptyField(Frequenza.Text()) || IsEmptyField(CallQso.Text())) return;
  Tag = "DX " + Frequenza.Text() + " " + CallQso.Text();
  if (!IsEmptyField(Note.Text())) Tag += " " + Trim(Note.Text());
  Hide();
}

void DxDialog::Cancel() {
  Tag = "CANCEL";
  Hide();
}

}  // namespace brenvo
