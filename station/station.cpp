#include "station/station.h"

#include <filesystem>
#include <memory>

#include "adif/esporta_adif.h"
#include "adif/importa_adif.h"
#include "awards/award_grid.h"
#include "awards/stat_sel.h"
#include "awards/worked_matrix.h"
#include "checks/verifica_entita.h"
#include "checks/verifica_log.h"
#include "conferme/conferme.h"
#include "contest/check_call_contest.h"
#include "contest/contest_form.h"
#include "contest/contest_new_qso.h"
#include "contest/contest_qso.h"
#include "contest/contest_search.h"
#include "contest/insert_qso.h"
#include "contest/stat_contest.h"
#include "contest/take_contact.h"
#include "core/colonne.h"
#include "core/files.h"
#include "digital/digitale.h"
#include "diplomi/diplomi.h"
#include "frame/palette.h"
#include "frame/tasti.h"
#include "gara/gara_contest.h"
#include "history/storia.h"
#include "links/dx_dialog.h"
#include "links/ft736.h"
#include "links/tnc.h"
#include "links/tnc_telnet.h"
#include "links/wwconv.h"
#include "list/cambia_colonna.h"
#include "list/conta_qso.h"
#include "list/elenco.h"
#include "log/corrispondente.h"
#include "log/log_form.h"
#include "log/log_search.h"
#include "log/old_qso.h"
#include "log/propagation_batch.h"
#include "maps/map_viewer.h"
#include "maps/mappa_square.h"
#include "print/gestione_qsl.h"
#include "print/qsl_update.h"
#include "print/reports.h"
#include "print/stampa_qsl.h"
#include "rig/modelli.h"
#include "rig/rtx.h"
#include "tables/help_form.h"
#include "tables/stazioni.h"
#include "tables/tabella_country.h"
#include "tables/tabella_note.h"
#include "tables/tabella_prefissi.h"
#include "tables/tabella_provincie.h"
#include "tables/user_form.h"
#include "upkeep/converti_ora.h"
#include "upkeep/maintenance.h"
#include "upkeep/ora_del_log.h"
#include "upkeep/preferenze.h"
#include "upkeep/rescue.h"
#include "upkeep/ripristina_backup.h"

namespace brenvo::station {
namespace {

template <class Form>
void Know(core::Session& session, const char* name) {
  session.Windows.Register(name, [&session] { return std::make_unique<Form>(session); });
}

void KnowWindows(core::Session& session) {
  Know<upkeep::RipristinaBackup>(session, "RipristinaBackup");
  Know<frame::Palette>(session, "Palette");
  Know<frame::Tasti>(session, "Tasti");
  Know<upkeep::Preferenze>(session, "Preferenze");
  Know<core::Colonne>(session, "Colonne");
  Know<list::Elenco>(session, "Elenco");
  Know<list::CambiaColonna>(session, "CambiaColonna");
  Know<list::ContaQso>(session, "ContaQso");
  Know<tables::Stazioni>(session, "Stazioni");
  Know<history::Storia>(session, "Storia");
  Know<log::Corrispondente>(session, "Corrispondente");
  Know<upkeep::OraDelLog>(session, "OraDelLog");
  Know<upkeep::ConvertiOra>(session, "ConvertiOra");
  Know<log::LogForm>(session, "LogForm");
  Know<log::LogSearch>(session, "LogSearch");
  log::KnowOldQsoBrowsers(session);
  Know<checks::VerificaLog>(session, "VerificaLog");
  Know<checks::VerificaEntita>(session, "VerificaEntita");
  Know<conferme::Conferme>(session, "Conferme");
  Know<diplomi::Diplomi>(session, "Diplomi");
  Know<adif::ImportaAdif>(session, "ImportaAdif");
  Know<adif::EsportaAdif>(session, "EsportaAdif");
  Know<tables::UserForm>(session, "User");
  Know<tables::TabellaPrefissi>(session, "TabellaPrefissi");
  Know<tables::TabellaCountry>(session, "TabellaCountry");
  Know<tables::TabellaProvincie>(session, "TabellaProvincie");
  Know<tables::TabellaNote>(session, "TabellaNote");
  Know<tables::HelpForm>(session, "Help");
  Know<maps::MappaSquare>(session, "MappaSquare");
  Know<print::StampaQsl>(session, "StampaQsl");
  Know<print::GestioneQsl>(session, "GestioneQsl");
  Know<contest::ContestForm>(session, "Contest");
  Know<contest::ContestSearch>(session, "ContestSearch");
  Know<contest::ContestQso>(session, "ContestQso");
  Know<contest::ContestNewQso>(session, "ContestNewQso");
  Know<contest::CheckCallContest>(session, "CheckCallContest");
  Know<contest::StatContest>(session, "StatContest");
  session.Windows.Register("GaraContest", [&session] {
    return std::make_unique<gara::GaraContest>(
        session, [&session](const auto& contest, const auto& replaced, const auto& typed,
                            const auto& beside) {
          contest::PutQso(session, contest, replaced, typed, beside);
        });
  });
  Know<awards::StatSel>(session, "StatSel");
  for (const awards::AwardMember& member : awards::AwardMembers()) {
    session.Windows.Register(std::string(member.window), [&session, &member] {
      return std::make_unique<awards::AwardGrid>(session, member);
    });
  }
  Know<awards::Hrd>(session, "Hrd");
  Know<awards::HrdMode>(session, "HrdMode");
  Know<links::TNC>(session, "TNC");
  Know<links::TNCtelnet>(session, "TNCtelnet");
  Know<links::WWConv>(session, "WWConv");
  Know<links::FT736>(session, "FT736");
  Know<links::DxDialog>(session, "DX");
  Know<rig::Modelli>(session, "Modelli");
}

void AttachActions(core::Session& session, frame::MainFrame& frame) {
  frame.Propagazione.OnClick = [&session] { log::AssignPropagations(session); };
  frame.cmImportaAdif.OnClick = [&session] { adif::ImportaFileAdif(session); };
  frame.cmQslAggiorna.OnClick = [&session] { print::UpdateLogForQsl(session); };
  for (const print::ReportMember& member : print::ReportMembers()) {
    (frame.*member.command).OnClick = [&session, &member] { print::PrintReport(session, member); };
  }
  maps::AttachMapViewer(session, frame);
  const auto programs = std::make_shared<digital::Programs>(session, *frame.Worked);
  frame.Services.push_back(programs);
  session.Windows.Register("Digitale", [&session, &programs = *programs] {
    return std::make_unique<digital::Digitale>(session, programs);
  });
  programs->ToContest = [&session](const core::ToldContact& told) {
    return contest::TakeContact(session, told);
  };
  programs->Start();
  frame.Services.push_back(std::make_shared<conferme::BoxKeeper>(session));
  const auto transceiver = std::make_shared<rig::Transceiver>(session);
  const auto rotator = std::make_shared<rig::Rotator>(session);
  frame.Services.push_back(transceiver);
  frame.Services.push_back(rotator);
  const auto server = std::make_shared<rig::RigServer>(session, *transceiver);
  frame.Services.push_back(server);
  session.Windows.Register(
      "Rtx", [&session, &transceiver = *transceiver, &rotator = *rotator, &server = *server] {
        return std::make_unique<rig::Rtx>(session, transceiver, rotator, server);
      });
  transceiver->Start();
  rotator->Start();
  server->Start();
}

frame::MainFrame& OpenFrame(core::Session& session) {
  const auto open = [&]() -> frame::MainFrame& {
    return static_cast<frame::MainFrame&>(
        session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  };
  try {
    return open();
  } catch (const engine::DatabaseError& failure) {
    session.CloseTables();
    if (!upkeep::PutBackInstead(session, failure)) throw;
  }
  return open();
}

}  // namespace

frame::MainFrame* StartStation(core::Session& session) {
  KnowWindows(session);
  try {
    frame::MainFrame& frame = OpenFrame(session);
    AttachActions(session, frame);
    session.Windows.Show(frame);
    return &frame;
  } catch (const std::exception& failure) {
    std::string told = core::FailureText(failure);
    std::error_code error;
    if (!std::filesystem::exists(session.File("\\Brenvo.mdb"), error) && !error) {
      const std::string where = upkeep::WhereDataIs(session.AppPath);
      if (!where.empty()) told += "\n\n" + where;
    }
    session.Messages().Show(platform::MessageIcon::kCritical, "Brenvo", told);
    return nullptr;
  }
}

bool StopStation(core::Session& session) {
  forms::Window* frame = session.Windows.Find("Brenvo");
  return frame == nullptr || session.Windows.Unload(*frame);
}

}  // namespace brenvo::station
