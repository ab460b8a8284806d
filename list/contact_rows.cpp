#include "contact_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <numeric>
#include <thread>

#include "core/quoted.h"

namespace brenvo::list {
namespace {

using core::ColumnKind;

constexpr std::string_view kNewestFirst = "Select QsoNr from Log Order By DataQso Desc,QsoNr Desc";
// Contacts that are read before the window shows; a log with no more is read whole.
constexpr std::size_t kAtOnce = 500;
// Milliseconds between the looks whether the rest has been read.
constexpr int kBetweenLooks = 10;
// And rows between the looks whether to go on.
constexpr unsigned kRowsBetweenLooks = 4096;

std::string InBrackets(std::string_view column) { return fmt::format("[{}]", column); }

}  // namespace

// What both threads see, one after the other.
struct ContactRows::Job {
  std::unique_ptr<engine::Reader> reader;
  std::vector<ContactColumn> columns;
  bool keys = false;
  std::vector<std::size_t> fields;
  std::optional<std::vector<std::int64_t>> selection;
  std::shared_ptr<const Known> known;  // of the fields; the job's own where it reads the keys
  Memories memories;
  std::exception_ptr failure;
  bool stopped = false;
};

ContactRows::ContactRows(core::Session& session)
    : session_(session),
      columns_(ContactColumns()),
      cells_(session),
      known_(std::make_shared<const Known>()),
      looking_(session.Machine.MakeTimer()) {
  looking_->SetInterval(kBetweenLooks);
  looking_->OnTick = [this] { session_.Windows.RunEvent([this] { LookWhetherRead(); }); };
}

ContactRows::~ContactRows() { Close(); }

void ContactRows::Close() {
  looking_->SetEnabled(false);
  work_.reset();
  job_.reset();
  busy_.reset();
  cells_.Close();
}

bool ContactRows::IsWanted(std::int64_t key) const {
  return !selection_ || std::binary_search(selection_->begin(), selection_->end(), key);
}

void ContactRows::Open(std::optional<std::vector<std::int64_t>> selection) {
  Close();
  selection_ = std::move(selection);
  if (selection_) {
    std::sort(selection_->begin(), selection_->end());
    selection_->erase(std::unique(selection_->begin(), selection_->end()), selection_->end());
  }
  memories_.clear();
  touched_.clear();
  ReadFirst();
  if (!whole_) Begin(true, {}, false);
}

void ContactRows::AddKept(const std::vector<std::string>& fields) {
  for (const std::string& field : fields) {
    // What a heading may not hold.
    if (field.empty() || field.find_first_of(",:") != std::string::npos) continue;
    if (std::ranges::find(columns_, field, &ContactColumn::heading) == columns_.end()) {
      columns_.push_back(KeptColumn(field));
    }
  }
}

void ContactRows::AddAllKept() {
  const forms::BusyPointer busy(session_.Host());
  std::vector<std::string> fields;
  const auto rows = session_.Db.OpenSnapshot("Select Campo from LogAdif Group By Campo");
  for (; !rows->EOF_(); rows->MoveNext()) fields.push_back(rows->Field(std::size_t{0}).Text());
  AddKept(fields);
}

// The newest contacts, as far as they come quickly.
void ContactRows::ReadFirst() {
  auto known = std::make_shared<Known>();
  if (selection_ && selection_->size() <= kAtOnce) {
    std::vector<std::pair<base::DateTime, std::int64_t>> dated;
    for (const std::int64_t key : *selection_) {
      if (const auto* contact = cells_.Contact(key)) dated.emplace_back(contact->DataQso, key);
    }
    std::ranges::sort(dated, std::greater());
    for (const auto& [date, key] : dated) known->keys.push_back(key);
    whole_ = true;
  } else {
    const auto rows = session_.Db.OpenSnapshot(kNewestFirst);
    std::size_t read = 0;
    for (; !rows->EOF_() && read < kAtOnce; rows->MoveNext(), ++read) {
      const std::int64_t key = rows->Field(std::size_t{0}).Integer();
      if (IsWanted(key)) known->keys.push_back(key);
    }
    whole_ = rows->EOF_();
  }
  known->byKey.resize(known->keys.size());
  std::iota(known->byKey.begin(), known->byKey.end(), Slot{0});
  std::sort(known->byKey.begin(), known->byKey.end(),
            [&](Slot a, Slot b) { return known->keys[a] < known->keys[b]; });
  known_ = known;
  added_.clear();
  order_.resize(known_->keys.size());
  std::iota(order_.begin(), order_.end(), Slot{0});
  shown_ = order_;
}

void ContactRows::ReadAnew() {
  cells_.ForgetAll();
  if (job_ != nullptr) {
    due_ = true;  // what is under way is finished first
    return;
  }
  std::vector<std::size_t> fields;
  for (const auto& [field, memory] : memories_) fields.push_back(field);
  Begin(true, std::move(fields), whole_ && order_.size() <= kAtOnce);
}

void ContactRows::Begin(bool keys, std::vector<std::size_t> fields, bool atOnce) {
  auto job = std::make_shared<Job>();
  job->columns = columns_;
  job->keys = keys;
  job->fields = std::move(fields);
  job->selection = selection_;
  job->known = known_;
  due_ = false;
  touched_.clear();
  job->reader = session_.Db.OpenReader();
  if (atOnce) {
    Run(*job, [] { return true; });
    TakeOver(*job);
    return;
  }
  job_ = job;
  if (!job->fields.empty()) busy_ = std::make_unique<forms::BusyPointer>(session_.Host());
  work_ = session_.Machine.RunInBackground([job](const std::stop_token& stop) {
    Run(*job, [&stop] { return !stop.stop_requested(); });
    job->reader.reset();
  });
  looking_->SetEnabled(true);
}

void ContactRows::LookWhetherRead() {
  if (work_ == nullptr || !work_->HasEnded()) return;
  looking_->SetEnabled(false);
  work_.reset();
  busy_.reset();
  const std::shared_ptr<Job> job = std::exchange(job_, nullptr);
  TakeOver(*job);
  if (due_) ReadAnew();
  if (OnReady) OnReady();
}

// On either thread: touches the job alone.
void ContactRows::Run(Job& job, const std::function<bool()>& goOn) {
  unsigned rows = 0;
  const auto each = [&](const std::string& select, const auto& see) {
    const bool whole = job.reader->ForEach(select, [&](engine::Reader::Row& row) {
      see(row);
      return ++rows % kRowsBetweenLooks != 0 || goOn();
    });
    job.stopped = job.stopped || !whole;
  };
  try {
    if (job.keys) {
      auto known = std::make_shared<Known>();
      each(std::string(kNewestFirst), [&](auto& row) {
        const std::int64_t key = row.Integer(0);
        if (!job.selection ||
            std::binary_search(job.selection->begin(), job.selection->end(), key)) {
          known->keys.push_back(key);
        }
      });
      known->byKey.resize(known->keys.size());
      std::iota(known->byKey.begin(), known->byKey.end(), Slot{0});
      std::sort(known->byKey.begin(), known->byKey.end(),
                [&](Slot a, Slot b) { return known->keys[a] < known->keys[b]; });
      job.known = std::move(known);
    }
    const Known& known = *job.known;
    std::vector<std::size_t> ofLog, beside;
    for (const std::size_t field : job.fields) {
      const ContactColumn& column = job.columns[field];
      job.memories.emplace(field, column.kind).first->second.Resize(known.keys.size());
      (column.source == ContactColumn::Source::kLog ? ofLog : beside).push_back(field);
    }
    // The rows come by number, as the slots do in byKey: nobody is looked for.
    const auto bySlot = [&](const std::string& select, const auto& take) {
      std::size_t at = 0;
      each(select, [&](engine::Reader::Row& row) {
        const std::int64_t key = row.Integer(0);
        while (at < known.byKey.size() && known.keys[known.byKey[at]] < key) ++at;
        if (at < known.byKey.size() && known.keys[known.byKey[at]] == key) {
          take(known.byKey[at], row);
        }
      });
    };
    if (!ofLog.empty()) {
      std::string names;
      std::vector<std::pair<ColumnKind, ColumnMemory*>> memories;
      for (const std::size_t field : ofLog) {
        names += ',' + InBrackets(job.columns[field].heading);
        memories.emplace_back(job.columns[field].kind, &job.memories.at(field));
      }
      bySlot(fmt::format("Select QsoNr{} from Log Order By QsoNr", names),
             [&](Slot slot, engine::Reader::Row& row) {
               std::size_t i = 0;
               for (auto& [kind, memoryOf] : memories) {
                 ColumnMemory& memory = *memoryOf;
                 ++i;
                 switch (kind) {
                   case ColumnKind::kDate:
                     memory.Set(slot, row.Date(i));
                     break;
                   case ColumnKind::kYesNo:
                     memory.Set(slot, row.Bool(i) ? "Sì" : "No");
                     break;
                   case ColumnKind::kNumber:
                     if (row.Number(i) != 0) memory.Set(slot, row.Text(i));
                     break;
                   case ColumnKind::kText:
                     memory.Set(slot, row.Text(i));
                     break;
                 }
               }
             });
    }
    for (const std::size_t field : beside) {
      const ContactColumn& column = job.columns[field];
      ColumnMemory& memory = job.memories.at(field);
      switch (column.source) {
        case ContactColumn::Source::kNumber:
          for (Slot slot = 0; slot < known.keys.size(); ++slot) {
            memory.Set(slot, std::to_string(known.keys[slot]));
          }
          break;
        case ContactColumn::Source::kUuid:
          bySlot("Select QsoNr,Uuid from LogOrigine Order By QsoNr",
                 [&](Slot slot, auto& row) { memory.Set(slot, row.Text(1)); });
          break;
        case ContactColumn::Source::kStation: {
          std::map<std::int64_t, std::string> names;
          each("Select Stazione,Nome from Stazioni",
               [&](auto& row) { names[row.Integer(0)] = row.Text(1); });
          bySlot("Select QsoNr,Stazione from LogOrigine Order By QsoNr",
                 [&](Slot slot, auto& row) { memory.Set(slot, names[row.Integer(1)]); });
          break;
        }
        case ContactColumn::Source::kKept:
          bySlot(fmt::format("Select QsoNr,Valore from LogAdif where Campo={} Order By QsoNr",
                             core::Quoted(column.heading)),
                 [&](Slot slot, auto& row) { memory.Set(slot, row.Text(1)); });
          break;
        case ContactColumn::Source::kLog:
          break;
      }
    }
    for (const auto& [field, memory] : job.memories) memory.Prepare();
  } catch (...) {
    job.failure = std::current_exception();
  }
}

void ContactRows::TakeOver(Job& job) {
  if (job.failure) std::rethrow_exception(job.failure);
  if (job.stopped) return;
  const auto keysOf = [this](const std::vector<Slot>& slots) {
    std::vector<std::int64_t> keys;
    for (const Slot slot : slots) keys.push_back(KeyOf(slot));
    return keys;
  };
  const std::vector<std::int64_t> touched = keysOf(touched_);
  if (job.keys) {
    memories_ = std::move(job.memories);
    known_ = job.known;
    added_.clear();
    order_.resize(known_->keys.size());
    std::iota(order_.begin(), order_.end(), Slot{0});
    shown_ = order_;
    whole_ = true;
  } else {
    for (auto& [field, memory] : job.memories) {
      memory.Resize(known_->keys.size() + added_.size());
      memories_.insert_or_assign(field, std::move(memory));
    }
    // Those that the job did not know of.
    const auto known = static_cast<Slot>(known_->keys.size());
    for (Slot slot = known; slot < known + added_.size(); ++slot) ReadCells(slot);
  }
  // What was stored meanwhile.
  touched_.clear();
  for (const std::int64_t key : touched) {
    cells_.Forget(key);
    const bool there = cells_.Contact(key) != nullptr;
    if (const auto slot = SlotOf(key)) Remove(*slot);
    if (there && IsWanted(key)) Insert(SlotFor(key));
  }
}

std::int64_t ContactRows::KeyOf(Slot slot) const {
  const std::size_t known = known_->keys.size();
  return slot < known ? known_->keys[slot] : added_[slot - known];
}

std::optional<Slot> ContactRows::SlotOf(std::int64_t key) const {
  const auto& byKey = known_->byKey;
  const auto at = std::lower_bound(byKey.begin(), byKey.end(), key, [&](Slot slot, std::int64_t k) {
    return known_->keys[slot] < k;
  });
  if (at != byKey.end() && known_->keys[*at] == key) return *at;
  const auto added = std::find(added_.begin(), added_.end(), key);
  if (added == added_.end()) return std::nullopt;
  return static_cast<Slot>(known_->keys.size() + static_cast<std::size_t>(added - added_.begin()));
}

Slot ContactRows::SlotFor(std::int64_t key) {
  if (const auto slot = SlotOf(key)) return *slot;
  added_.push_back(key);
  const std::size_t slots = known_->keys.size() + added_.size();
  for (auto& [field, memory] : memories_) memory.Resize(slots);
  return static_cast<Slot>(slots - 1);
}

std::optional<base::DateTime> ContactRows::DateOf(Slot slot) {
  const core::LogContact* contact = cells_.Contact(KeyOf(slot));
  if (contact == nullptr) return std::nullopt;
  return contact->DataQso;
}

// In its place by date and number; who is gone meanwhile counts as the oldest.
void ContactRows::Insert(Slot slot) {
  const auto mine = std::pair(DateOf(slot), KeyOf(slot));
  const auto at = std::lower_bound(
      order_.begin(), order_.end(), mine,
      [&](Slot other, const auto&) { return std::pair(DateOf(other), KeyOf(other)) > mine; });
  order_.insert(at, slot);
  ReadCells(slot);
}

void ContactRows::Remove(Slot slot) {
  for (auto* slots : {&order_, &shown_}) {
    const auto at = std::find(slots->begin(), slots->end(), slot);
    if (at != slots->end()) slots->erase(at);
  }
}

void ContactRows::ReadCells(Slot slot) {
  for (auto& [field, memory] : memories_) {
    const ContactColumn& column = columns_[field];
    if (column.kind == ColumnKind::kDate) {
      memory.Set(slot, DateOf(slot));
    } else {
      memory.Set(slot, cells_.Text(KeyOf(slot), column));
    }
  }
}

void ContactRows::Follow(const core::OneContact& change) {
  const std::int64_t key = change.after ? change.after->key : change.before->key;
  if (!IsWanted(key)) return;
  cells_.Forget(key);
  const Slot slot = SlotFor(key);
  if (job_ != nullptr) touched_.push_back(slot);
  Remove(slot);
  if (change.after) Insert(slot);
}

bool ContactRows::Arrange(const core::Arrangement& wanted) {
  const std::vector<std::string> words = core::WordsOf(wanted.words);
  if (wanted.filters.empty() && wanted.order.empty() && words.empty()) {
    shown_ = order_;
    return whole_;
  }
  if (!whole_) return false;
  std::vector<std::size_t> missing;
  const auto need = [&](std::size_t field) {
    if (!memories_.contains(field) && std::ranges::find(missing, field) == missing.end()) {
      missing.push_back(field);
    }
  };
  for (const auto& each : wanted.filters) need(each.field);
  for (const auto& each : wanted.order) need(each.field);
  if (!words.empty()) {
    for (const std::size_t field : wanted.searched) need(field);
  }
  if (!missing.empty()) {
    if (job_ != nullptr) return false;  // asked again when that is there
    const bool atOnce = order_.size() <= kAtOnce;
    Begin(false, std::move(missing), atOnce);
    if (!atOnce) return false;
  }

  const std::size_t slots = known_->keys.size() + added_.size();
  std::vector<char> passes(slots, 1);
  for (const auto& each : wanted.filters) memories_.at(each.field).Keep(each.filter, passes);
  for (const std::string& word : words) {
    std::vector<char> found(slots);
    for (const std::size_t field : wanted.searched) memories_.at(field).Note(word, found);
    for (std::size_t slot = 0; slot < slots; ++slot) {
      passes[slot] = static_cast<char>(passes[slot] & found[slot]);
    }
  }
  shown_.clear();
  std::ranges::copy_if(order_, std::back_inserter(shown_), [&](Slot slot) { return passes[slot]; });
  for (auto order = wanted.order.rbegin(); order != wanted.order.rend(); ++order) {
    memories_.at(order->field).Sort(shown_, order->descending);
  }
  return true;
}

std::int64_t ContactRows::KeyAt(std::int64_t row) {
  return KeyOf(shown_.at(static_cast<std::size_t>(row)));
}

std::optional<std::int64_t> ContactRows::RowOf(std::int64_t key) {
  const auto slot = SlotOf(key);
  if (!slot) return std::nullopt;
  const auto at = std::find(shown_.begin(), shown_.end(), *slot);
  if (at == shown_.end()) return std::nullopt;
  return at - shown_.begin();
}

std::string ContactRows::CellText(std::int64_t row, std::size_t field) {
  if (row < 0 || row >= RowCount() || field >= columns_.size()) return {};
  return cells_.Text(KeyAt(row), columns_[field]);
}

// The operator waits for it, with the busy pointer.
const ColumnMemory& ContactRows::MemoryOf(std::size_t field) {
  if (!memories_.contains(field)) {
    const forms::BusyPointer busy(session_.Host());
    while (job_ != nullptr) {  // what it brings is not lost
      while (!work_->HasEnded()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
      LookWhetherRead();
    }
    if (!memories_.contains(field)) Begin(false, {field}, true);
  }
  return memories_.at(field);
}

std::vector<std::int64_t> ContactRows::WithOther(const core::LogColumn& column,
                                                 const std::vector<std::int64_t>& keys,
                                                 std::string_view text) {
  std::size_t field = 0;
  while (columns_[field].log == nullptr || columns_[field].log->name != column.name) ++field;
  std::vector<std::int64_t> others;
  // A few are looked at as they stand.
  if (keys.size() <= kAtOnce) {
    for (const std::int64_t key : keys) {
      const core::LogContact* contact = cells_.Contact(key);
      if (contact != nullptr && ShownText(*contact, column) != text) others.push_back(key);
    }
    return others;
  }
  const ColumnMemory& memory = MemoryOf(field);
  for (const std::int64_t key : keys) {
    if (const auto slot = SlotOf(key); slot && memory.Text(*slot) != text) others.push_back(key);
  }
  return others;
}

std::vector<ContactRows::Count> ContactRows::CountBy(std::size_t field,
                                                     const std::vector<std::int64_t>& keys) {
  const ColumnMemory& memory = MemoryOf(field);
  const bool isDate = columns_[field].kind == ColumnKind::kDate;
  std::map<std::string, std::int64_t> counts;
  for (const std::int64_t key : keys) {
    const auto slot = SlotOf(key);
    if (!slot) continue;
    const std::string text = memory.Text(*slot);
    ++counts[isDate ? text.substr(0, text.find(' ')) : text];
  }
  std::vector<Count> sorted;
  for (const auto& [text, contacts] : counts) sorted.push_back({text, contacts});
  std::ranges::stable_sort(sorted,
                           [](const Count& a, const Count& b) { return a.contacts > b.contacts; });
  return sorted;
}

}  // namespace brenvo::list
