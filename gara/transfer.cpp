#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "contest_log.h"
#include "core/history.h"
#include "core/log_time.h"
#include "core/place_on_day.h"
#include "core/prefix.h"
#include "core/quoted.h"
#include "core/station_profile.h"
#include "core/transaction.h"

namespace brenvo::gara {
namespace {

// Report and serial as the log's own transfer writes them: "59 012".
std::string ReportAndSerial(std::string_view report, std::int64_t serial) {
  const std::string plain = base::Trim(report);
  return serial > 0 ? base::PadRight(plain, 3) + fmt::format("{:03}", serial) : plain;
}

core::LogContact ContactFor(core::Session& session, const Entry& entry, const Contact& contact,
                            const core::LogTimes& times) {
  core::LogContact made;
  made.DataQso = times.FromUtc(contact.time);
  made.Call = contact.call;
  made.Banda = BandInLog(session, contact.band);
  made.Modo = contact.mode;
  made.Locator = contact.locator;
  made.QrkDato = ReportAndSerial(contact.reportSent, contact.serialSent);
  made.QrkRicevuto = ReportAndSerial(contact.reportReceived, contact.serialReceived);
  made.Note = entry.name;
  const core::ResolvedPrefix table = core::ResolvePrefix(session, contact.call);
  const core::CallPlace place =
      core::PlaceOnDay({table.Prefisso, table.Country, table.Continente.Text(),
                        table.ZonaCQ.Number(), table.ZonaITU.Number()},
                       session.ByDate.Of(contact.call, contact.time));
  made.Prefisso = place.Prefisso;
  made.Country = place.Country;
  made.Continente = place.Continente;
  made.ZonaCQ = place.ZonaCQ;
  made.ZonaITU = place.ZonaITU;
  const std::string& own = entry.locator.empty() ? session.Station.MyLocator : entry.locator;
  if (const auto km = DistanceKm(own, contact.locator, 111.2)) {
    made.Qrb = static_cast<double>(static_cast<std::int64_t>(*km));
  }
  if (const auto profile = core::FindBandProfile(session, made.Banda)) {
    made.Frequenza = profile->Frequenza.Number();
    made.Potenza = profile->Potenza.Number();
  }
  return made;
}

// What the log's columns have no place for, by the standard's names.
void KeepExchange(engine::RowAppender& fields, std::int64_t key, const Entry& entry,
                  const Rule& rule, const Contact& contact) {
  const auto keep = [&](std::string_view name, std::string_view value) {
    if (!value.empty()) fields.Append({key, name, value});
  };
  keep("CONTEST_ID", rule.contestId);
  if (contact.serialSent > 0 && rule.Part(PartKind::kSerial) != nullptr) {
    keep("STX", std::to_string(contact.serialSent));
  }
  if (contact.serialReceived > 0) keep("SRX", std::to_string(contact.serialReceived));
  keep("STX_STRING", entry.exchange);
  keep("SRX_STRING", contact.exchange);
}

}  // namespace

Transferred TransferToLog(core::Session& session, const Entry& entry, const Rule& rule,
                          const std::vector<StoredQso>& qsos) {
  Transferred counts;
  const core::LogTimes times(session);
  session.Contacts.ChangeMany(
      entry.name + " nel log", {core::ContactTable::kLog, core::ContactTable::kContestQso}, [&] {
        core::Transaction transaction(session);
        auto log = session.Contacts.OpenAppender();
        const auto fields = session.Db.OpenAppender("LogAdif");
        const auto marks = session.Db.OpenTable("GareQso");
        marks->SetIndex("PrimaryKey");
        for (const StoredQso& qso : qsos) {
          if (qso.inLog) continue;
          const core::LogContact contact = ContactFor(session, entry, qso.contact, times);
          try {
            const std::int64_t key = log.Append(contact);
            KeepExchange(*fields, key, entry, rule, qso.contact);
            ++counts.fresh;
          } catch (const engine::DatabaseError& failure) {
            if (failure.Number != engine::DatabaseError::kDuplicateKey) throw;
            ++counts.known;
          }
          marks->Seek("=", {entry.Day(), contact.Banda, qso.contact.serialSent});
          if (marks->NoMatch()) continue;
          marks->Edit();
          marks->Set("NelLog", true);
          marks->Update();
        }
        transaction.Commit();
        return counts.fresh + counts.known > 0;
      });
  return counts;
}

}  // namespace brenvo::gara
