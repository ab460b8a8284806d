#include "station/station.h"

#include "awards/award_grid.h"
#include "awards/stat_sel.h"
#include "awards/worked_matrix.h"
#include "log/log_form.h"
#include "print/qsl_update.h"
#include "print/reports.h"
#include "print/stampa_qsl.h"

namespace brenvo {
namespace {

template <class Form>
void Know(Session& session, const char* name) {
  session.Windows.Register(name, [&session] { return std::make_unique<Form>(session); });
}

void KnowWindows(Session& session) {
  Know<LogForm>(session, "LogForm");
  Know<StampaQsl>(session, "StampaQsl");
  Know<StatSel>(session, "StatSel");
  for (const AwardMember& member : AwardMembers()) {
    session.Windows.Register(std::string(member.window), [&session, &member] {
      return std::make_unique<AwardGrid>(session, member);
    });
  }
  Know<Hrd>(session, "Hrd");
  Know<HrdMode>(session, "HrdMode");
}

void HangInActions(Session& session, MainFrame& frame) {
  frame.SetAction("cmQslAggiorna", [&session] { UpdateLogForQsl(session); });
  for (const ReportMember& member : ReportMembers()) {
    frame.SetAction(member.command, [&session, &member] { PrintReport(session, member); });
  }
}

}  // namespace

MainFrame* StartStation(Session& session) {
  KnowWindows(session);
  try {
    auto& frame =
        static_cast<MainFrame&>(session.Windows.Adopt(std::make_unique<MainFrame>(session)));
    HangInActions(session, frame);
    session.Windows.Show(frame);
    return &frame;
  } catch (const std::exception& failure) {
    session.Messages().Show(MessageIcon::kCritical, "Brenvo", failure.what());
    return nullptr;
  }
}

bool StopStation(Session& session) {
  Window* frame = session.Windows.Find("Brenvo");
  return frame == nullptr || session.Windows.Unload(*frame);
}

}  // namespace brenvo
