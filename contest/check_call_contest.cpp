#include "contest/check_call_contest.h"

#include <fmt/format.h>

#include "base/text.h"
#include "contact.h"
#include "core/modules.h"

namespace brenvo {

CheckCallContest::CheckCallContest(Session& session)
    : Window(session.Host(), "CheckCallContest", "Check call", Twips(3600), Twips(1800)),
      session_(session) {
  CallContest.Filter = UpperKey;
  Status.ReadOnly = true;
  DefaultCommand = &cmCheck;
  CancelCommand = &cmCancel;

  Panel3D1.OnPointerDown = [this](Twips x, Twips y) {
    grabX_ = x;
    grabY_ = y;
    dragging_ = true;
  };
  Panel3D1.OnPointerMove = [this](Twips x, Twips y) { Drag(x, y); };
  Panel3D1.OnPointerUp = [this] { dragging_ = false; };
}

void CheckCallContest::Load() {
  RestoreWindow(session_, *this, "CheckCall");
  DataContest = session_.CurrentContest.DataContest;
  Banda = session_.CurrentContest.Banda;
  session_.CheckCallContestOpen = true;
}

void CheckCallContest::Unload() {
  SaveWindow(session_, *this, "CheckCall");
  session_.CheckCallContestOpen = false;
}

void CheckCallContest::Check() {
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("Select ProgrDato FROM [Contest Qso]{} AND Call='{}'",
                  OfContest(DataContest, Banda), Trim(CallContest.Text())));
  Status.SetText(rows->EOF_() ? "OK" : "Doppio (" + Trim(rows->Field(0).Text()) + ")");
}

void CheckCallContest::Drag(Twips x, Twips y) {
  StatusBar1.SetPanel(1, "");
  if (!dragging_) return;
  Bounds bounds = GetBounds();
  bounds.left = bounds.left + (x - grabX_);
  bounds.top = bounds.top + (y - grabY_);
  Move(bounds);
}

}  // namespace brenvo
