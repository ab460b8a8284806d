#include "upkeep/ora_del_log.h"

#include <fmt/format.h>

#include "core/log_contact.h"
#include "core/texts.h"
#include "core/window_place.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kSettingsKey = "OraDelLog";

}  // namespace

OraDelLog::OraDelLog(core::Session& session)
    : forms::Window(session.Host(), "OraDelLog", "Ora del log", base::Twips(7800),
                    base::Twips(3300)),
      session_(session) {
  CancelCommand = &cmExit;
}

void OraDelLog::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  const auto known = core::LogTimeOf(session_);
  Domanda.SetText(known ? fmt::format("Le ore del log sono in UTC, o nell'ora locale? Finora: {}.",
                                      *known == core::LogTime::kUtc ? "UTC" : "ora locale")
                        : "Le ore del log sono in UTC, o nell'ora locale?");
  Spiegazione.SetText(
      "Le ore di ciò che entra ed esce in UTC, come i file ADIF, diventano quelle del log.\n"
      "Le ore già scritte restano come sono. La risposta si cambia con Utility > Ora del log...");
  const auto log = session_.Db.OpenTable("Log");
  log->SetIndex("DataQso");
  log->MoveLast();
  if (log->EOF_()) {
    Ultimo.SetText("Nel log non c'è ancora nessun Qso.");
  } else {
    Ultimo.SetText(fmt::format("L'ultimo Qso: {}, {}",
                               core::FieldText(*log, core::column::kDataQso),
                               core::FieldText(*log, core::column::kCall)));
  }
}

void OraDelLog::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

void OraDelLog::Answer(core::LogTime time) {
  core::StoreLogTime(session_, time);
  Close();
}

}  // namespace brenvo::upkeep
