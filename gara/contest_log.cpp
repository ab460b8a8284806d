#include "contest_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/number.h"
#include "base/text.h"
#include "core/history.h"
#include "core/place_on_day.h"
#include "core/prefix.h"
#include "core/quoted.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "core/transaction.h"
#include "gara/log_file.h"
#include "geo/locator.h"

namespace brenvo::gara {
namespace {

constexpr std::int64_t kDay = 24 * 60 * 60;

std::string DayLiteral(base::DateTime day) {
  return fmt::format("DateValue({})", core::Quoted(base::DateText(day)));
}

std::string OfDayAndBand(base::DateTime day, std::string_view band) {
  return fmt::format(" WHERE DataContest={} AND Banda={}", DayLiteral(day), core::Quoted(band));
}

Entry ReadEntry(engine::Recordset& row) {
  Entry entry;
  entry.number = row.Field("Gara").Integer();
  entry.rules = row.Field("Regole").Text();
  entry.name = row.Field("Nome").Text();
  entry.begin = row.Field("Inizio").Date();
  entry.end = row.Field("Fine").Date();
  entry.call = row.Field("Call").Text();
  entry.locator = row.Field("Locator").Text();
  entry.exchange = row.Field("Scambio").Text();
  entry.category = row.Field("Categoria").Text();
  entry.mail = row.Field("Mail").Text();
  entry.goal = row.Field("Obiettivo").Integer();
  return entry;
}

void WriteEntry(engine::EditableRecordset& row, const Entry& entry) {
  row.Set("Regole", entry.rules);
  row.Set("Nome", entry.name);
  row.Set("DataContest", entry.Day());
  row.Set("Inizio", entry.begin);
  row.Set("Fine", entry.end);
  row.Set("Call", entry.call);
  row.Set("Locator", entry.locator);
  row.Set("Scambio", entry.exchange);
  row.Set("Categoria", entry.category);
  row.Set("Mail", entry.mail);
  row.Set("Obiettivo", entry.goal);
}

core::ContestContext ContextOf(core::Session& session, const Entry& entry, std::string_view band) {
  return {base::DateText(entry.Day()),
          BandInLog(session, band),
          entry.name,
          entry.locator,
          false,
          false,
          false};
}

// A note without the markers that are made anew with each store.
std::string PlainNote(std::string_view note) {
  std::string plain(note);
  for (;;) {
    if (plain.starts_with("[Exc=") && plain.find(']') != std::string::npos) {
      plain.erase(0, plain.find(']') + 1);
    } else if (plain.starts_with("Qso doppio (") && plain.find(')') != std::string::npos) {
      plain.erase(0, plain.find(')') + 1);
    } else {
      return base::Trim(plain);
    }
    plain = base::LTrim(plain);
  }
}

// Without a contest of its own, or with none, 0 stands where a number must.
std::string NumberText(std::int64_t number) { return std::to_string(number); }

core::TypedContestQso TypedOf(const StoredQso& qso) {
  const Contact& contact = qso.contact;
  core::TypedContestQso typed;
  typed.Giorno = std::to_string(contact.time.Day());
  typed.Qtr = core::HourMinute(contact.time);
  typed.Call = contact.call;
  typed.QrkDato = contact.reportSent;
  typed.ProgrDato = NumberText(contact.serialSent);
  typed.QrkRicevuto = contact.reportReceived;
  typed.ProgrRicevuto = NumberText(contact.serialReceived);
  typed.Locator = contact.locator;
  typed.Modo = contact.mode;
  typed.Exc = contact.exchange;
  typed.Note = PlainNote(qso.note);
  typed.Qsl = qso.qsl;
  return typed;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : " ") + text;
  return all;
}

std::vector<engine::Value> RowBeside(base::DateTime day, const std::string& band,
                                     const StoredQso& qso) {
  const Contact& contact = qso.contact;
  return {day,
          band,
          contact.serialSent,
          contact.time,
          contact.mode,
          contact.reportSent,
          contact.reportReceived,
          contact.exchange,
          qso.worth.points,
          Joined(qso.worth.multipliers),
          qso.worth.duplicateOf.has_value(),
          qso.inLog};
}

// Whether contacts or a header of one of its bands are there.
bool HasRows(engine::Database& database, std::int64_t number) {
  const auto bands = database.OpenSnapshot(
      fmt::format("Select DataContest,Banda from GareBande where Gara={}", number));
  for (; !bands->EOF_(); bands->MoveNext()) {
    const std::string where =
        OfDayAndBand(bands->Field(std::size_t{0}).Date(), bands->Field(1).Text());
    for (const std::string_view table : {"Contest", "[Contest Qso]"}) {
      if (!database.OpenSnapshot(fmt::format("Select Banda from {}{}", table, where))->EOF_()) {
        return true;
      }
    }
  }
  return false;
}

// Emptied with all contests, and not taken back since.
bool IsGone(engine::Database& database, std::int64_t number) {
  const auto row =
      database.OpenSnapshot(fmt::format("Select Azzerata from Gare where Gara={}", number));
  return !row->EOF_() && row->Field(std::size_t{0}).Bool() && !HasRows(database, number);
}

// The band's row of Contest, so that the told screens have its head; and the highest serial.
void KeepBand(core::Session& session, const Entry& entry, const std::string& band,
              std::int64_t serial) {
  const auto bands = session.Db.OpenTable("GareBande");
  bands->SetIndex("PrimaryKey");
  bands->Seek("=", {entry.Day(), band});
  if (bands->NoMatch()) {
    bands->AddNew();
    bands->Set("Gara", entry.number);
    bands->Set("Banda", band);
    bands->Set("DataContest", entry.Day());
    bands->Set("UltimoProgr", serial);
    bands->Update();
  } else if (bands->Field("Gara").Integer() != entry.number) {
    // What was left of a contest that is gone.
    session.Db.Execute("DELETE * FROM GareQso" + OfDayAndBand(entry.Day(), band));
    bands->Edit();
    bands->Set("Gara", entry.number);
    bands->Set("UltimoProgr", serial);
    bands->Update();
  } else if (bands->Field("UltimoProgr").Integer() < serial) {
    bands->Edit();
    bands->Set("UltimoProgr", serial);
    bands->Update();
  }
  const auto contests = session.Db.OpenTable("Contest");
  contests->SetIndex("PrimaryKey");
  contests->Seek("=", {entry.Day(), band});
  if (!contests->NoMatch()) return;
  // Whoever takes the band's first contact back takes it back too.
  session.Contacts.Past().BroughtContest(entry.Day(), band);
  const auto profile = core::FindBandProfile(session, band);
  contests->AddNew();
  contests->Set("DataContest", entry.Day());
  contests->Set("Banda", band);
  contests->Set("Nome", entry.name);
  contests->Set("Categoria", entry.category);
  contests->Set("FissoPortatile", entry.call.ends_with("/P") ? "P" : "F");
  contests->Set("SingoloMulti", "S");
  contests->Set("Call", entry.call);
  for (const std::string_view column : {"Qra", "Qth", "Indirizzo", "Provincia"}) {
    contests->Set(column, core::ProfileText(session, column));
  }
  contests->Set("SQth", core::ProfileText(session, "Qth"));
  contests->Set("SProvincia", core::ProfileText(session, "Provincia"));
  contests->Set("Locator", entry.locator);
  if (profile) {
    contests->Set("Frequenza", profile->Frequenza);
    contests->Set("Potenza", profile->Potenza);
    contests->Set("RTX", profile->RTX);
    contests->Set("Antenna", profile->Antenna);
  }
  contests->Update();
}

void WriteWorths(core::Session& session, const Entry& entry,
                 const std::vector<ChangedWorth>& changed) {
  if (changed.empty()) return;
  const auto rows = session.Db.OpenTable("GareQso");
  rows->SetIndex("PrimaryKey");
  for (const ChangedWorth& each : changed) {
    rows->Seek("=", {entry.Day(), BandInLog(session, each.band), each.serial});
    if (rows->NoMatch()) continue;
    rows->Edit();
    rows->Set("Punti", each.worth.points);
    rows->Set("Moltiplicatori", Joined(each.worth.multipliers));
    rows->Set("Doppio", each.worth.duplicateOf.has_value());
    rows->Update();
  }
}

void DropBeside(core::Session& session, const Entry& entry, const std::string& band,
                std::int64_t serial) {
  session.Db.Execute("DELETE * FROM GareQso" + OfDayAndBand(entry.Day(), band) +
                     fmt::format(" AND ProgrDato={}", serial));
}

void AppendNew(core::Session& session, const core::PutContestQso& put, const Entry& entry,
               const StoredQso& qso) {
  const std::string band = BandInLog(session, qso.contact.band);
  put(ContextOf(session, entry, band), std::nullopt, TypedOf(qso), [&](std::int64_t) {
    KeepBand(session, entry, band, qso.contact.serialSent);
    // What was left of a contact that is gone goes with its serial.
    DropBeside(session, entry, band, qso.contact.serialSent);
    session.Db.OpenAppender("GareQso")->Append(RowBeside(entry.Day(), band, qso));
  });
}

}  // namespace

std::string BandInLog(core::Session& session, std::string_view band) {
  const std::string plain = base::Trim(band);
  const auto rows = session.Db.OpenSnapshot("Select Banda from UserRTX");
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::string name = rows->Field(std::size_t{0}).Text();
    if (base::SameText(base::Trim(name), plain)) return name;
  }
  return plain;
}

std::vector<Entry> ReadEntries(engine::Database& database) {
  std::vector<Entry> entries;
  const auto rows =
      database.OpenSnapshot("Select * from Gare Order By DataContest Desc, Gara Desc");
  for (; !rows->EOF_(); rows->MoveNext()) {
    Entry entry = ReadEntry(*rows);
    if (rows->Field("Azzerata").Bool() && !HasRows(database, entry.number)) continue;
    entries.push_back(std::move(entry));
  }
  return entries;
}

std::int64_t AddEntry(core::Session& session, const Entry& entry) {
  const auto rows = session.Db.OpenTable("Gare");
  rows->AddNew();
  WriteEntry(*rows, entry);
  rows->Update();
  rows->SetBookmark(rows->LastModified());
  return rows->Field("Gara").Integer();
}

void ChangeEntry(core::Session& session, const Entry& entry) {
  const auto rows =
      session.Db.OpenDynaset(fmt::format("Select * from Gare where Gara={}", entry.number));
  if (rows->EOF_()) return;
  rows->Edit();
  WriteEntry(*rows, entry);
  rows->Update();
}

std::string WhyNoBand(core::Session& session, std::int64_t number, base::DateTime day,
                      std::string_view band) {
  const std::string name = BandInLog(session, band);
  const std::string where = OfDayAndBand(day.DatePart(), name);
  const auto mine = session.Db.OpenSnapshot("Select Gara from GareBande" + where);
  const std::int64_t owner = mine->EOF_() ? 0 : mine->Field(std::size_t{0}).Integer();
  if (owner != 0 && owner == number) return {};
  const auto contest = session.Db.OpenSnapshot("Select Nome from Contest" + where);
  const auto qsos = session.Db.OpenSnapshot("Select Call from [Contest Qso]" + where);
  if (contest->EOF_() && qsos->EOF_() && (owner == 0 || IsGone(session.Db, owner))) return {};
  return fmt::format(
      "Il {} in {} c'è già un contest{}: in un giorno una banda ne ha uno solo",
      base::DateText(day), base::Trim(band),
      contest->EOF_() ? "" : ", " + base::Trim(contest->Field(std::size_t{0}).Text()));
}

std::vector<std::string> BandsOf(engine::Database& database, std::int64_t number) {
  std::vector<std::string> bands;
  const auto rows =
      database.OpenSnapshot(fmt::format("Select Banda from GareBande where Gara={}", number));
  for (; !rows->EOF_(); rows->MoveNext()) {
    bands.push_back(base::Trim(rows->Field(std::size_t{0}).Text()));
  }
  return bands;
}

std::vector<StoredQso> ReadQsos(core::Session& session, const Entry& entry) {
  std::vector<StoredQso> qsos;
  for (const std::string& plain : BandsOf(session.Db, entry.number)) {
    const std::string where = OfDayAndBand(entry.Day(), BandInLog(session, plain));
    std::map<std::int64_t, std::size_t> places;
    const auto rows = session.Db.OpenSnapshot(
        "Select "
        "ProgrDato,ProgrRicevuto,Giorno,Qtr,Call,QrkDato,QrkRicevuto,Locator,Modo,Punti,Note,"
        "Qsl from [Contest Qso]" +
        where);
    for (; !rows->EOF_(); rows->MoveNext()) {
      StoredQso& qso = qsos.emplace_back();
      Contact& contact = qso.contact;
      const auto at = [&](std::size_t column) { return rows->Field(column); };
      contact.band = plain;
      contact.serialSent = at(0).Integer();
      contact.serialReceived = at(1).Integer();
      // A contest of two days: a day before the first one is one of the next month.
      base::DateTime day = entry.Day();
      for (int i = 0; i < 31 && day.Day() != at(2).Integer(); ++i) day = day.Later(kDay);
      if (day.Day() != at(2).Integer()) day = entry.Day();
      contact.time = day + at(3).Date().TimePart();
      contact.call = base::Trim(at(4).Text());
      contact.reportSent = base::Trim(at(5).Text());
      contact.reportReceived = base::Trim(at(6).Text());
      contact.locator = base::Trim(at(7).Text());
      contact.mode = base::Trim(at(8).Text());
      qso.punti = at(9).Integer();
      qso.note = at(10).Text();
      qso.qsl = at(11).Bool();
      const std::size_t from = qso.note.find("[Exc=");
      const std::size_t to = from == std::string::npos ? from : qso.note.find(']', from);
      if (to != std::string::npos) contact.exchange = qso.note.substr(from + 5, to - from - 5);
      places.emplace(contact.serialSent, qsos.size() - 1);
    }
    const auto beside = session.Db.OpenSnapshot(
        "Select ProgrDato,Quando,Modo,RapportoDato,RapportoRicevuto,Scambio,Punti,Doppio,NelLog "
        "from GareQso" +
        where);
    for (; !beside->EOF_(); beside->MoveNext()) {
      const auto place = places.find(beside->Field(std::size_t{0}).Integer());
      if (place == places.end()) continue;
      StoredQso& qso = qsos[place->second];
      Contact& contact = qso.contact;
      const auto at = [&](std::size_t column) { return beside->Field(column); };
      // What another window has changed meanwhile counts, the rest is what that one cannot hold.
      const base::DateTime when = at(1).Date();
      if (when.Day() == contact.time.Day() && when.Hour() == contact.time.Hour() &&
          when.Minute() == contact.time.Minute()) {
        contact.time = when;
      }
      const auto same = [](std::string_view whole, std::string_view number) {
        return base::Val(whole) == base::Val(number);
      };
      if (const std::string sent = at(3).Text(); same(sent, contact.reportSent)) {
        contact.reportSent = sent;
      }
      if (const std::string received = at(4).Text(); same(received, contact.reportReceived)) {
        contact.reportReceived = received;
      }
      qso.worth.points = at(6).Integer();
      if (at(7).Bool()) qso.worth.duplicateOf = 0;
      qso.inLog = at(8).Bool();
      qso.isBeside = true;
    }
  }
  std::ranges::stable_sort(qsos, [](const StoredQso& a, const StoredQso& b) {
    return std::pair(a.contact.time, a.contact.serialSent) <
           std::pair(b.contact.time, b.contact.serialSent);
  });
  return qsos;
}

std::int64_t LastSerial(engine::Database& database, const Entry& entry, std::string_view band) {
  // The band's name with its blanks or without: text comparison does not count those behind.
  std::int64_t last = 0;
  const auto kept = database.OpenSnapshot(
      fmt::format("Select Banda,UltimoProgr from GareBande where Gara={}", entry.number));
  for (; !kept->EOF_(); kept->MoveNext()) {
    const std::string name = kept->Field(std::size_t{0}).Text();
    if (!base::SameText(base::Trim(name), base::Trim(band))) continue;
    last = std::max(last, kept->Field(std::size_t{1}).Integer());
    const auto stored = database.OpenSnapshot("Select max(ProgrDato) from [Contest Qso]" +
                                              OfDayAndBand(entry.Day(), name));
    if (!stored->EOF_()) last = std::max(last, stored->Field(std::size_t{0}).Integer());
  }
  return last;
}

void StoreNewQso(core::Session& session, const core::PutContestQso& put, const Entry& entry,
                 const StoredQso& qso, const std::vector<ChangedWorth>& others) {
  const std::string band = BandInLog(session, qso.contact.band);
  put(ContextOf(session, entry, band), std::nullopt, TypedOf(qso), [&](std::int64_t) {
    KeepBand(session, entry, band, qso.contact.serialSent);
    DropBeside(session, entry, band, qso.contact.serialSent);
    session.Db.OpenAppender("GareQso")->Append(RowBeside(entry.Day(), band, qso));
    WriteWorths(session, entry, others);
  });
}

void ChangeQso(core::Session& session, const core::PutContestQso& put, const Entry& entry,
               std::string_view band, std::int64_t serial, const StoredQso& qso,
               const std::vector<ChangedWorth>& others) {
  session.Contacts.ChangeMany("Qso di contest modificato", {core::ContactTable::kContestQso}, [&] {
    core::Transaction transaction(session);
    const std::string name = BandInLog(session, band);
    put(ContextOf(session, entry, name), serial, TypedOf(qso), {});
    DropBeside(session, entry, name, serial);
    session.Db.OpenAppender("GareQso")->Append(RowBeside(entry.Day(), name, qso));
    WriteWorths(session, entry, others);
    transaction.Commit();
    return true;
  });
}

void DeleteQso(core::Session& session, const Entry& entry, std::string_view band,
               std::int64_t serial, const std::vector<ChangedWorth>& others) {
  session.Contacts.ChangeMany("Qso di contest cancellato", {core::ContactTable::kContestQso}, [&] {
    core::Transaction transaction(session);
    const std::string name = BandInLog(session, band);
    const std::string where =
        OfDayAndBand(entry.Day(), name) + fmt::format(" AND ProgrDato={}", serial);
    session.Contacts.Past().KeepContestQsos(where);
    session.Db.Execute("DELETE * FROM [Contest Qso]" + where);
    DropBeside(session, entry, name, serial);
    WriteWorths(session, entry, others);
    transaction.Commit();
    return true;
  });
}

void KeepWorths(core::Session& session, const Entry& entry,
                const std::vector<ChangedWorth>& changed) {
  core::Transaction transaction(session.Db);
  WriteWorths(session, entry, changed);
  transaction.Commit();
}

void StoreQsos(core::Session& session, const core::PutContestQso& put, const Entry& entry,
               std::string_view title, const std::vector<StoredQso>& qsos) {
  session.Contacts.ChangeMany(title, {core::ContactTable::kContestQso}, [&] {
    core::Transaction transaction(session);
    for (const StoredQso& qso : qsos) {
      AppendNew(session, put, entry, qso);
    }
    transaction.Commit();
    return !qsos.empty();
  });
}

}  // namespace brenvo::gara
