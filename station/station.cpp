#include "station/station.h"

#include "log/log_form.h"
#include "maps/map_viewer.h"
#include "maps/mappa_square.h"
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
  Know<MappaSquare>(session, "MappaSquare");
  Know<StampaQsl>(session, "StampaQsl");
}

void HangInActions(Session& session, MainFrame& frame) {
  HangInMapViewer(session, frame);
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
