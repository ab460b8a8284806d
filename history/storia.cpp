#include "history/storia.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/texts.h"

namespace brenvo::history {
namespace {

std::string StateOf(const PastWork& work) {
  if (work.Ripreso != 0) return fmt::format("ripreso dal lavoro {}", work.Ripreso);
  if (work.Riprende != 0) return fmt::format("riprende il lavoro {}", work.Riprende);
  return {};
}

std::string Shown(const core::LogContact& contact, const core::LogColumn& column) {
  if (column.name == core::column::kDataQso) return base::DateTimeText(contact.DataQso);
  if (column.Holds<bool>())
    return core::YesNo(core::ColumnText(contact, column) == "Y" ? "-1" : "0");
  return base::Trim(core::ColumnText(contact, column));
}

// The columns that the contact did not have alike before and after; of a new or a deleted one those
// that hold something.
std::vector<core::MemoryRows::Row> ChangesOf(const TouchedContact& touched) {
  std::vector<core::MemoryRows::Row> rows;
  const core::LogContact none;
  const core::LogContact& before = touched.before ? *touched.before : none;
  const core::LogContact& after = touched.after ? *touched.after : none;
  const std::string& call = touched.before ? before.Call : after.Call;
  for (const core::LogColumn& column : core::LogColumns()) {
    const std::string was = touched.before ? Shown(before, column) : std::string();
    const std::string is = touched.after ? Shown(after, column) : std::string();
    const bool empty = (!touched.before || core::IsColumnEmpty(before, column)) &&
                       (!touched.after || core::IsColumnEmpty(after, column));
    if (was == is || empty) continue;
    rows.push_back({std::to_string(touched.qsoNr), call, std::string(column.name), was, is});
  }
  return rows;
}

}  // namespace

Storia::Storia(core::Session& session)
    : core::TableWindow(session, "Storia", "Storia dei contatti", base::Twips(13500),
                        base::Twips(8400)) {
  ShowCommands({&cmRiprendi, &cmRiprendiQso});
  DefaultCommand = &cmRiprendi;
  renewing_ = session.Machine.MakeTimer();
  renewing_->SetInterval(kRenewAfter);
  renewing_->OnTick = [this] { Renew(); };
  stored_ = session.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.Many()) {
      Renew();
    } else {
      renewing_->SetEnabled(true);
    }
  });
}

void Storia::Load() {
  core::TableWindow::Load();
  Cambiamenti.SetSource(&changes_);
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const char* heading : {"Qso", "Call", "Campo", "Prima", "Dopo"}) {
    forms::DataGrid::ColumnOf& column = columns.emplace_back();
    column.heading = heading;
    column.field = columns.size() - 1;
  }
  Cambiamenti.SetColumnsOf(std::move(columns));
  FillTable();
  ShowTable(rows_, {"Nr", "Quando", "Lavoro", "Qso", "Stato"});
}

void Storia::FillTable() {
  works_ = LastWorks(session_, kMostWorks);
  std::vector<core::MemoryRows::Row> rows;
  for (const PastWork& work : works_) {
    rows.push_back({std::to_string(work.Lavoro), base::DateTimeText(work.Quando), work.Titolo,
                    std::to_string(work.Qso), StateOf(work)});
  }
  rows_.SetRows(std::move(rows));
}

void Storia::Renew() {
  renewing_->SetEnabled(false);
  const auto marked = ChosenKey();
  const std::int64_t work = marked ? works_[static_cast<std::size_t>(*marked)].Lavoro : 0;
  FillTable();
  std::optional<std::int64_t> key;
  for (std::size_t i = 0; i < works_.size() && !key; ++i) {
    if (works_[i].Lavoro == work) key = static_cast<std::int64_t>(i);
  }
  shown_ = 0;
  ShowRows(key);
}

void Storia::RowChosen() { ShowChanges(); }

void Storia::ShowChanges() {
  const auto key = ChosenKey();
  const std::int64_t work = key ? works_[static_cast<std::size_t>(*key)].Lavoro : 0;
  if (work == shown_ && work != 0) return;
  shown_ = work;
  changed_.clear();
  std::vector<core::MemoryRows::Row> rows;
  std::size_t contacts = 0;
  if (key) {
    for (const TouchedContact& touched : ContactsOf(session_, work, 0, kMostContacts)) {
      ++contacts;
      for (core::MemoryRows::Row& row : ChangesOf(touched)) {
        rows.push_back(std::move(row));
        changed_.push_back(touched.qsoNr);
      }
    }
  }
  changes_.SetRows(std::move(rows));
  Cambiamenti.SetCurrent(changed_.empty() ? 0 : 1, 0);
  const bool more = contacts == kMostContacts &&
                    works_[static_cast<std::size_t>(*key)].Qso > std::int64_t{kMostContacts};
  Contatti.SetText(more ? fmt::format("I primi {} contatti del lavoro", contacts)
                        : "I contatti del lavoro");
}

std::int64_t Storia::ChosenContact() {
  const std::int64_t row = Cambiamenti.Row();
  return row >= 1 && row <= std::ssize(changed_) ? changed_[static_cast<std::size_t>(row - 1)] : 0;
}

void Storia::TakeBackWork() { TakeBackAndSay(std::nullopt); }
void Storia::TakeBackOne() { TakeBackAndSay(ChosenContact()); }

void Storia::TakeBackAndSay(std::optional<std::int64_t> contact) {
  const auto key = ChosenKey();
  if (!key) return;
  const PastWork work = works_[static_cast<std::size_t>(*key)];
  const forms::BusyPointer busy(Host());
  Say(Told(work, TakeBack(session_, work, contact)));
}

}  // namespace brenvo::history
