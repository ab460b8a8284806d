#include "contest/check_call_contest.h"

#include <fmt/format.h>

#include "base/text.h"
#include "contact.h"
#include "core/entry.h"
#include "core/window_place.h"

namespace brenvo::contest {

CheckCallContest::CheckCallContest(core::Session& session)
    : forms::Window(session.Host(), "CheckCallContest", "Check call", base::Twips(3600),
                    base::Twips(1800)),
      session_(session) {
  CallContest.Filter = core::UpperKey;
  Status.ReadOnly = true;
  DefaultCommand = &cmCheck;
  CancelCommand = &cmCancel;

  Panel3D1.OnPointerDown = [this](base::Twips x, base::Twips y) {
    grabX_ = x;
    grabY_ = y;
    dragging_ = true;
  };
  Panel3D1.OnPointerMove = [this](base::Twips x, base::Twips y) { Drag(x, y); };
  Panel3D1.OnPointerUp = [this] { dragging_ = false; };
}

void CheckCallContest::Load() {
  core::RestoreWindow(session_, *this, "CheckCall");
  DataContest = session_.Handed.CurrentContest.DataContest;
  Banda = session_.Handed.CurrentContest.Banda;
}

void CheckCallContest::Unload() { core::SaveWindow(session_, *this, "CheckCall"); }

void CheckCallContest::Check() {
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("Select ProgrDato FROM [Contest Qso]{} AND Call='{}'",
                  OfContest(DataContest, Banda), base::Trim(CallContest.Text())));
  Status.SetText(rows->EOF_() ? "OK" : "Doppio (" + base::Trim(rows->Field(0).Text()) + ")");
}

void CheckCallContest::Drag(base::Twips x, base::Twips y) {
  StatusBar1.SetPanel(1, "");
  if (!dragging_) return;
  forms::Bounds bounds = GetBounds();
  bounds.left = bounds.left + (x - grabX_);
  bounds.top = bounds.top + (y - grabY_);
  Move(bounds);
}

}  // namespace brenvo::contest
