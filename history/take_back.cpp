#include "history/take_back.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "core/beside_writer.h"
#include "core/confirmations.h"
#include "core/countries_by_date.h"
#include "core/history.h"
#include "core/long_run.h"
#include "core/own_values.h"
#include "core/quoted.h"
#include "core/rows_beside.h"
#include "core/transaction.h"
#include "past_states.h"

namespace brenvo::history {
namespace {

constexpr std::string_view kWorks = "Select Lavoro,Quando,Titolo,Qso,Riprende,Ripreso from Storia ";
constexpr std::string_view kChosen = "(Select QsoNr from StoriaScelta)";
constexpr std::size_t kTogether = 1000;  // contacts beside which fields are put back at once

std::vector<PastWork> ReadWorks(core::Session& session, const std::string& condition,
                                std::int64_t count) {
  std::vector<PastWork> works;
  const auto rows = session.Db.OpenSnapshot(std::string(kWorks) + condition);
  const auto whole = [&](std::size_t at) {
    const engine::Value value = rows->Field(at);
    return value.IsNull() ? 0 : value.Integer();
  };
  for (; !rows->EOF_() && std::ssize(works) < count; rows->MoveNext()) {
    works.push_back({whole(0), rows->Field(1).ReadableDate().value_or(base::DateTime()),
                     rows->Field(2).Text(), whole(3), whole(4), whole(5)});
  }
  return works;
}

std::optional<PastWork> ReadWork(core::Session& session, const std::string& condition) {
  const std::vector<PastWork> works = ReadWorks(session, condition, 1);
  return works.empty() ? std::nullopt : std::optional(works.front());
}

struct Run {
  std::int64_t from = 0, to = 0;
};
// What the work brought, in the order of the numbers; runs that end before `from` are left out.
class BroughtRuns {
 public:
  BroughtRuns(core::Session& session, std::int64_t work, std::int64_t from = 0)
      : rows_(session.Db.OpenSnapshot(
            fmt::format("Select Dal,Al from StoriaNuovi where Lavoro={} and Al>={} Order By Dal",
                        work, from))) {
    const auto first = session.Db.OpenSnapshot(
        fmt::format("Select Dal,Al from Storia where Lavoro={} and Al>={}", work, from));
    if (!first->EOF_()) first_ = RunOf(*first);
  }
  // Nothing behind the last one.
  std::optional<Run> Next() {
    if (first_) return std::exchange(first_, std::nullopt);
    if (rows_->EOF_()) return std::nullopt;
    const Run run = RunOf(*rows_);
    rows_->MoveNext();
    return run;
  }

 private:
  static Run RunOf(engine::Recordset& row) {
    return {row.Field(std::size_t{0}).Integer(), row.Field(1).Integer()};
  }
  std::unique_ptr<engine::Snapshot> rows_;
  std::optional<Run> first_;
};

std::vector<std::int64_t> Numbers(core::Session& session, const std::string& select) {
  std::vector<std::int64_t> numbers;
  const auto rows = session.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) {
    numbers.push_back(rows->Field(std::size_t{0}).Integer());
  }
  return numbers;
}

// One try to take a work back, within a transaction.
class Try {
 public:
  Try(core::Session& session, const PastWork& work, std::optional<std::int64_t> contact,
      std::set<std::int64_t>& left)
      : session_(session),
        past_(session.Contacts.Past()),
        work_(work.Lavoro),
        contact_(contact),
        left_(left) {}

  // False when contacts stand in the way of those that come back: they are in `left` then, and the
  // transaction is to be rolled back.
  bool Log() {
    Choose();
    LeaveChangedSince();
    const std::string kept =
        fmt::format(" from StoriaLog where Lavoro={} and QsoNr in {}", work_, kChosen);
    const std::int64_t coming = Count("Select Count(*)" + kept);
    past_.KeepWhere(fmt::format(" where QsoNr in {}", kChosen));
    past_.CameBack(kept + " and QsoNr not in (Select QsoNr from Log)");
    taken += Count("Select Count(*) from StoriaScelta");
    session_.Db.Execute(fmt::format("Delete * from Log where QsoNr in {}", kChosen));
    const std::int64_t came = session_.Db.Execute(
        fmt::format("Insert into Log ({0}) Select {0}{1}", LogColumnNames(), kept));
    if (came == coming) return true;
    for (const std::int64_t qsoNr :
         Numbers(session_,
                 fmt::format("Select QsoNr{} and QsoNr not in (Select QsoNr from Log)", kept))) {
      left_.insert(qsoNr);
    }
    return false;
  }

  // What stood beside the contacts, and the log's values.
  void Fields() {
    const auto rows = session_.Db.OpenSnapshot(fmt::format(
        "Select QsoNr,Campo,Valore from StoriaCampi where Lavoro={} and (QsoNr in {}{}) Order By "
        "QsoNr",
        work_, kChosen, contact_ ? "" : " or QsoNr=0"));
    std::vector<PastField> block;
    std::set<std::int64_t> contacts;
    for (; !rows->EOF_(); rows->MoveNext()) {
      const std::int64_t qsoNr = rows->Field(std::size_t{0}).Integer();
      if (contacts.size() == kTogether && !contacts.contains(qsoNr)) {
        PutBack(block, contacts);
        block.clear();
        contacts.clear();
      }
      contacts.insert(qsoNr);
      block.push_back({qsoNr, rows->Field(1).Text(), rows->Field(2)});
    }
    PutBack(block, contacts);
  }

  void ContestQsos() {
    PutBackRows(
        "Contest Qso", "StoriaContestQso", {"DataContest", "Banda", "ProgrDato"},
        [this](const std::string& where) { past_.KeepContestQsos(where); },
        [this](const RowValues& key) {
          past_.BroughtContestQso(key[0].Date(), key[1].Text(), key[2].Integer());
        });
  }
  void Contests() {
    PutBackRows(
        "Contest", "StoriaContest", {"DataContest", "Banda"},
        [this](const std::string& where) { past_.KeepContests(where); },
        [this](const RowValues& key) { past_.BroughtContest(key[0].Date(), key[1].Text()); },
        // A header that contacts still stand under.
        [this](const std::string& where) {
          return !session_.Db.OpenSnapshot("Select Call from [Contest Qso]" + where)->EOF_();
        });
  }

  std::int64_t taken = 0, leftRows = 0;

 private:
  struct PastField {
    std::int64_t qsoNr;
    std::string name;
    engine::Value value;
  };

  // Fields and confirmations go back together, the rest one by one.
  void PutBack(const std::vector<PastField>& fields, const std::set<std::int64_t>& contacts) {
    if (fields.empty()) return;
    const std::vector<std::int64_t> keys(contacts.begin(), contacts.end());
    std::vector<std::map<std::string, std::string>> kept(keys.size());
    std::vector<std::map<std::string, core::Confirmation>> told(keys.size());
    core::SeeRowsBeside(session_.Db, "LogAdif", "Campo,Valore", keys,
                        [&](std::size_t place, engine::Recordset& row) {
                          kept[place][base::UpperAscii(base::Trim(row.Field(1).Text()))] =
                              row.Field(2).Text();
                        });
    core::SeeRowsBeside(session_.Db, "LogConferme", core::kConfirmationColumns, keys,
                        [&](std::size_t place, engine::Recordset& row) {
                          core::Confirmation each = core::ConfirmationOfRow(row, 1);
                          std::string service = base::UpperAscii(each.service);
                          told[place][std::move(service)] = std::move(each);
                        });
    const std::set<std::pair<std::int64_t, std::string>> touched = TouchedSince(keys);
    core::BesideWriter writer(session_, core::BesideWriter::Contacts::kAreKept);
    std::size_t place = 0;
    for (const PastField& field : fields) {
      while (keys[place] != field.qsoNr) ++place;
      if (touched.contains({field.qsoNr, base::UpperAscii(base::Trim(field.name))}) &&
          IsChangedSince(field.qsoNr, field.name)) {
        continue;
      }
      if (const auto service = core::History::ServiceOf(field.name); !service.empty()) {
        writer.SetConfirmation(field.qsoNr, std::string(service),
                               At(told[place], base::UpperAscii(service)),
                               core::ConfirmationOfText(field.value.Text()));
      } else if (field.qsoNr != 0 && !field.name.starts_with('(')) {
        writer.SetField(field.qsoNr, field.name,
                        At(kept[place], base::UpperAscii(base::Trim(field.name))),
                        field.value.IsNull() ? std::nullopt : std::optional(field.value.Text()));
      } else {
        PutBackOne(field);
      }
    }
    writer.Write();
  }

  template <class Told>
  static std::optional<Told> At(const std::map<std::string, Told>& all, const std::string& name) {
    const auto at = all.find(name);
    return at == all.end() ? std::nullopt : std::optional(at->second);
  }

  // Names that later works have kept of these contacts too.
  std::set<std::pair<std::int64_t, std::string>> TouchedSince(
      const std::vector<std::int64_t>& keys) {
    std::set<std::pair<std::int64_t, std::string>> touched;
    const auto rows = session_.Db.OpenSnapshot(
        fmt::format("Select QsoNr,Campo from StoriaCampi where QsoNr in ({}) and Lavoro>{} and "
                    "Lavoro<{}",
                    fmt::join(keys, ","), work_, past_.Number()));
    for (; !rows->EOF_(); rows->MoveNext()) {
      touched.emplace(rows->Field(std::size_t{0}).Integer(),
                      base::UpperAscii(base::Trim(rows->Field(1).Text())));
    }
    return touched;
  }

  void PutBackOne(const PastField& field) {
    if (field.qsoNr == 0) {
      past_.KeepValue(field.name);
      core::StoreOwnValue(session_.Db, field.name,
                          field.value.IsNull() ? std::nullopt : std::optional(field.value.Text()));
      session_.Contacts.StationChanged();
      ++taken;
    } else if (field.name == core::History::kStationField) {
      past_.KeepStation(field.qsoNr);
      session_.Db.Execute(fmt::format("Update LogOrigine Set Stazione={} where QsoNr={}",
                                      field.value.IsNull() ? 0 : field.value.Integer(),
                                      field.qsoNr));
    } else if (field.name == core::History::kToldField) {
      past_.KeepTold(field.qsoNr);
      core::KeepToldEntity(session_.Db, field.qsoNr,
                           field.value.IsNull()
                               ? std::nullopt
                               : std::optional(static_cast<int>(base::Val(field.value.Text()))));
    } else if (const auto side = core::History::SideOf(field.name)) {
      past_.KeepCards(field.qsoNr, *side);
      core::StoreCards(session_.Db, field.qsoNr, *side,
                       core::CardsOfText(field.value.Text()).value_or(core::QslCards()));
    }
  }

  std::int64_t Count(const std::string& select) {
    return FirstRow(session_.Db, select)->front().Integer();
  }

  void Choose() {
    engine::Database& db = session_.Db;
    db.Execute("Delete * from StoriaScelta");
    const std::string only = contact_ ? fmt::format(" and QsoNr={}", *contact_) : "";
    db.Execute(fmt::format("Insert into StoriaScelta Select QsoNr from StoriaLog where Lavoro={}{}",
                           work_, only));
    for (const char* runs : {"Storia", "StoriaNuovi"}) {
      db.Execute(
          fmt::format("Insert into StoriaScelta Select QsoNr from Log,{0} where {0}.Lavoro={1} "
                      "and QsoNr Between Dal And Al{2}",
                      runs, work_, only));
    }
    for (const std::int64_t qsoNr : left_) Leave(qsoNr);
  }

  void Leave(std::int64_t qsoNr) {
    session_.Db.Execute(fmt::format("Delete * from StoriaScelta where QsoNr={}", qsoNr));
    left_.insert(qsoNr);
  }

  void LeaveChangedSince() {
    std::set<std::int64_t> touched;
    for (const auto& [table, number] : {std::pair("StoriaLog", "QsoNr"), {"StoriaNuovi", "Dal"}}) {
      const auto again =
          Numbers(session_,
                  fmt::format("Select QsoNr from StoriaScelta where Exists (Select Lavoro from {0} "
                              "where {0}.{1}=StoriaScelta.QsoNr and Lavoro>{2})",
                              table, number, work_));
      touched.insert(again.begin(), again.end());
    }
    for (const std::int64_t qsoNr : touched) {
      if (StateBehind(session_.Db, work_, qsoNr) != CurrentState(session_.Db, qsoNr)) Leave(qsoNr);
    }
  }

  bool IsChangedSince(std::int64_t qsoNr, const std::string& name) {
    const auto next = FirstRow(
        session_.Db,
        fmt::format("Select Valore from StoriaCampi where QsoNr={} and Campo={} and Lavoro>{} and "
                    "Lavoro<{} Order By Lavoro",
                    qsoNr, core::Quoted(name), work_, past_.Number()));
    return next && next->front() != CurrentField(qsoNr, name);
  }

  engine::Value CurrentField(std::int64_t qsoNr, const std::string& name) {
    if (qsoNr == 0) {
      const auto value = core::OwnValue(session_.Db, name);
      return value ? engine::Value(*value) : engine::Value();
    }
    if (const auto side = core::History::SideOf(name)) {
      const std::string cards = core::TextOfCards(core::CardsOf(session_.Db, qsoNr, *side));
      return cards.empty() ? engine::Value() : engine::Value(cards);
    }
    if (const auto service = core::History::ServiceOf(name); !service.empty()) {
      const auto told = core::ConfirmationOf(session_.Db, qsoNr, service);
      return told ? engine::Value(core::TextOfConfirmation(*told)) : engine::Value();
    }
    if (name == core::History::kToldField) {
      const std::optional<int> told = core::EntityKeptOf(session_.Db, qsoNr).told;
      return told ? engine::Value(std::to_string(*told)) : engine::Value();
    }
    const auto row = FirstRow(
        session_.Db, name == core::History::kStationField
                         ? fmt::format("Select Stazione from LogOrigine where QsoNr={}", qsoNr)
                         : fmt::format("Select Valore from LogAdif where QsoNr={} and Campo={}",
                                       qsoNr, core::Quoted(name)));
    if (!row) return {};
    // StoriaCampi holds texts.
    return row->front().IsNull() ? engine::Value() : engine::Value(row->front().Text());
  }

  // Rows of the contests, which are known by their keys; `history` holds the table's columns behind
  // Lavoro and Nuovo.
  void PutBackRows(std::string_view table, std::string_view history,
                   const std::vector<std::string_view>& keyColumns,
                   const std::function<void(const std::string& where)>& keep,
                   const std::function<void(const RowValues& key)>& brought,
                   const std::function<bool(const std::string& where)>& stays = {}) {
    if (contact_) return;
    const auto kept =
        session_.Db.OpenSnapshot(fmt::format("Select * from {} where Lavoro={}", history, work_));
    if (kept->EOF_()) return;
    const auto rows = session_.Db.OpenTable(table);
    rows->SetIndex("PrimaryKey");
    const std::vector<std::string> columns = rows->Columns();
    for (; !kept->EOF_(); kept->MoveNext()) {
      RowValues key;
      for (const std::string_view column : keyColumns) key.push_back(kept->Field(column));
      const std::string where = WhereKey(keyColumns, key);
      rows->Seek(engine::SeekComparison::kEqual, key);
      const bool there = !rows->NoMatch();
      const bool isNew = kept->Field("Nuovo").Bool();
      if (IsRowChangedSince(history, where, columns, there ? rows.get() : nullptr) ||
          (isNew && there && stays && stays(where))) {
        ++leftRows;
        continue;
      }
      there ? keep(where) : brought(key);
      ++taken;
      if (isNew) {
        if (there) rows->Delete();
        continue;
      }
      there ? rows->Edit() : rows->AddNew();
      for (const std::string& column : columns) rows->Set(column, kept->Field(column));
      rows->Update();
    }
  }

  static std::string WhereKey(const std::vector<std::string_view>& columns, const RowValues& key) {
    std::string where;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      where += fmt::format("{}{}=", i == 0 ? " where " : " and ", columns[i]);
      where += i == 0   ? fmt::format("DateValue('{}')", base::DateText(key[i].Date()))
               : i == 1 ? core::Quoted(key[i].Text())
                        : std::to_string(key[i].Integer());
    }
    return where;
  }

  bool IsRowChangedSince(std::string_view history, const std::string& where,
                         const std::vector<std::string>& columns, engine::Recordset* current) {
    const auto next = session_.Db.OpenSnapshot(
        fmt::format("Select * from {}{} and Lavoro>{} Order By Lavoro", history, where, work_));
    if (next->EOF_()) return false;
    const bool wasThere = !next->Field("Nuovo").Bool();
    if (!wasThere || current == nullptr) return wasThere != (current != nullptr);
    return std::ranges::any_of(columns, [&](const std::string& column) {
      return next->Field(column) != current->Field(column);
    });
  }

  core::Session& session_;
  core::History& past_;
  std::int64_t work_;
  std::optional<std::int64_t> contact_;
  std::set<std::int64_t>& left_;
};

void MarkTakenBack(core::Session& session, const PastWork& work, std::int64_t by) {
  session.Db.Execute(fmt::format("Update Storia Set Ripreso={} where Lavoro={}", by, work.Lavoro));
  if (work.Riprende != 0) {
    session.Db.Execute(
        fmt::format("Update Storia Set Ripreso=Null where Lavoro={}", work.Riprende));
  }
}

// Nothing when other contacts stand in the way, which are among those left then.
std::optional<TakenBack> TakeBackOnce(core::Session& session, const PastWork& work,
                                      std::optional<std::int64_t> contact,
                                      std::set<std::int64_t>& left) {
  core::Transaction transaction(session);
  Try attempt(session, work, contact, left);
  if (!attempt.Log()) return std::nullopt;
  attempt.Fields();
  attempt.ContestQsos();
  attempt.Contests();
  session.Db.Execute("Delete * from StoriaScelta");
  const TakenBack result{attempt.taken, std::ssize(left) + attempt.leftRows, false};
  if (result.taken == 0) return result;
  if (!contact && result.left == 0) MarkTakenBack(session, work, session.Contacts.Past().Number());
  transaction.Commit();
  return result;
}

}  // namespace

std::optional<PastWork> FindWork(core::Session& session, std::int64_t work) {
  return ReadWork(session, fmt::format("where Lavoro={}", work));
}

std::vector<PastWork> LastWorks(core::Session& session, std::int64_t count) {
  return ReadWorks(session, "Order By Lavoro Desc", count);
}

std::optional<PastWork> LastWork(core::Session& session, std::int64_t before) {
  return ReadWork(session,
                  fmt::format("where Riprende Is Null and Ripreso Is Null and Qso>0 and Lavoro<{} "
                              "Order By Lavoro Desc",
                              before));
}

std::vector<TouchedContact> ContactsOf(core::Session& session, std::int64_t work, std::int64_t from,
                                       std::size_t count) {
  std::set<std::int64_t> numbers;
  const auto add = [&](const std::string& select) {
    const auto rows = session.Db.OpenSnapshot(select);
    for (std::size_t i = 0; i < count && !rows->EOF_(); ++i, rows->MoveNext()) {
      numbers.insert(rows->Field(std::size_t{0}).Integer());
    }
  };
  add(fmt::format("Select QsoNr from StoriaLog where Lavoro={} and QsoNr>{} Order By QsoNr", work,
                  from));
  std::size_t brought = 0;
  BroughtRuns runs(session, work, from + 1);
  for (auto run = runs.Next(); run && brought < count; run = runs.Next()) {
    std::int64_t qsoNr = std::max(run->from, from + 1);
    for (; qsoNr <= run->to && brought < count; ++qsoNr, ++brought) numbers.insert(qsoNr);
  }
  const auto contactIn = [](const std::optional<RowValues>& row) {
    return row ? std::optional(core::ContactOf(*row)) : std::nullopt;
  };
  std::vector<TouchedContact> contacts;
  for (const std::int64_t qsoNr : numbers) {
    if (contacts.size() == count) break;
    contacts.push_back(
        {qsoNr,
         contactIn(FirstRow(session.Db,
                            fmt::format("Select {} from StoriaLog where Lavoro={} and QsoNr={}",
                                        LogColumnNames(), work, qsoNr))),
         contactIn(StateBehind(session.Db, work, qsoNr))});
  }
  return contacts;
}

TakenBack TakeBack(core::Session& session, const PastWork& work,
                   std::optional<std::int64_t> contact) {
  const std::string title = "Ripreso: " + work.Titolo;
  TakenBack result;
  std::set<std::int64_t> left;
  session.Contacts.ChangeMany(
      title, {core::ContactTable::kLog, core::ContactTable::kContestQso},
      [&] {
        result.stopped = !core::RunLongStatements(
            session, title, "Operazione interrotta: tutto è rimasto com'era.", [&] {
              std::optional<TakenBack> taken;
              while (!taken) taken = TakeBackOnce(session, work, contact, left);
              result = *taken;
            });
        return !result.stopped && result.taken > 0;
      },
      work.Lavoro);
  return result;
}

std::optional<LastTaken> TakeBackLast(core::Session& session) {
  constexpr int kMostWorksTried = 20;
  std::optional<LastTaken> last;
  auto work = LastWork(session);
  for (int tried = 0; work && tried < kMostWorksTried; ++tried) {
    last = {*work, TakeBack(session, *work)};
    if (last->result.taken > 0 || last->result.stopped) break;
    work = LastWork(session, work->Lavoro);
  }
  return work ? last : std::nullopt;
}

std::string Told(const PastWork& work, const TakenBack& result) {
  if (result.stopped) return "Interrotto: tutto è rimasto com'era";
  std::string told = result.taken == 0
                         ? fmt::format("Niente da riprendere di: {}", work.Titolo)
                         : fmt::format("Ripreso: {} ({} Qso)", work.Titolo, result.taken);
  if (result.left > 0) {
    told += fmt::format("; {} cambiati dopo restano come sono", result.left);
  }
  return told;
}

}  // namespace brenvo::history
