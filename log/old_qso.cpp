#include "log/old_qso.h"

#include "core/texts.h"
#include "core/window_place.h"

namespace brenvo::log {
namespace {

// A call that no contact has.
constexpr std::string_view kNoRows =
    "SELECT * FROM Log where Call='YYZZYYZZ' ORDER By DataQso,QsoNr";

}  // namespace

const OldQsoKind kOldQsoByCall = {"OldQsoForm", "Old Qso", "OldQso",
                                  &core::OpenWindows::OldQsoForm};
const OldQsoKind kOldQsoByLocator = {"OldQsoLocator", "Old Qso with Locator", "OldQsoLocator",
                                     &core::OpenWindows::OldQsoLocator};

OldQso::OldQso(core::Session& session, const OldQsoKind& kind)
    : core::FeedWindow(session.Host(), std::string(kind.name), std::string(kind.caption),
                       base::Twips(9600), base::Twips(3000)),
      DataLog(session),
      session_(session),
      kind_(kind) {
  DataGrid1.SetSource(&DataLog);
  DataGrid1.OnDoubleClick = [this] { ShowInLog(); };
}

void OldQso::Load() {
  core::RestoreWindow(session_, *this, kind_.settingsKey);
  SetRecordSource(kNoRows);
  DataGrid1.SetColumnsOf({DataLog.GridColumn("Data Qso", "DataQso"),
                          DataLog.GridColumn("Banda", "Banda"), DataLog.GridColumn("Call", "Call"),
                          DataLog.GridColumn("Qra", "Qra"), DataLog.GridColumn("Qth", "Qth"),
                          DataLog.GridColumn("Locator", "Locator"),
                          DataLog.GridColumn("Qsl Inviata", "QslInviata", core::YesNo),
                          DataLog.GridColumn("Qsl Ricevuta", "QslRicevuta", core::YesNo)});
  session_.Opened.*kind_.handle = this;
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kLog && change.Many()) DataLog.Renew(DataGrid1);
  });
}

void OldQso::Unload() {
  changes_ = {};
  core::SaveWindow(session_, *this, kind_.settingsKey);
  DataLog.Close();
  if (session_.Opened.*kind_.handle == this) session_.Opened.*kind_.handle = nullptr;
}

void OldQso::SetRecordSource(std::string_view select) {
  DataLog.RecordSource = select;
  DataLog.Refresh();
  DataGrid1.ContentChanged();
}

void OldQso::ShowInLog() {
  const std::int64_t row = DataGrid1.Row();
  if (!session_.Opened.LogOpen || row < 1 || row >= DataGrid1.Rows()) return;
  session_.ShowInLog("Select * from Log where QsoNr=" + DataLog.Text(row - 1, "QsoNr"));
}

void KnowOldQsoBrowsers(core::Session& session) {
  for (const OldQsoKind* kind : {&kOldQsoByCall, &kOldQsoByLocator}) {
    session.Windows.Register(std::string(kind->name),
                             [&session, kind] { return std::make_unique<OldQso>(session, *kind); });
  }
}

}  // namespace brenvo::log
