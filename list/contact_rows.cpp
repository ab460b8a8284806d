#include "contact_rows.h"

#include <algorithm>
#include <numeric>
#include <thread>

namespace brenvo::list {
namespace {

using core::ColumnKind;

// Contacts that are read before the window shows; a log with no more is read whole.
constexpr std::size_t kAtOnce = 500;
// Milliseconds between the looks whether the rest has been read.
constexpr int kBetweenLooks = 10;

}  // namespace

ContactRows::ContactRows(core::Session& session)
    : session_(session),
      columns_(ContactColumns()),
      cells_(session),
      known_(std::make_shared<const KnownContacts>()),
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
  std::vector<std::int64_t> keys;
  if (selection_ && selection_->size() <= kAtOnce) {
    std::vector<std::pair<base::DateTime, std::int64_t>> dated;
    for (const std::int64_t key : *selection_) {
      if (const auto* contact = cells_.Contact(key)) dated.emplace_back(contact->DataQso, key);
    }
    std::ranges::sort(dated, std::greater());
    for (const auto& [date, key] : dated) keys.push_back(key);
    whole_ = true;
  } else {
    const auto rows = session_.Db.OpenSnapshot(kNewestFirst);
    std::size_t read = 0;
    for (; !rows->EOF_() && read < kAtOnce; rows->MoveNext(), ++read) {
      const std::int64_t key = rows->Field(std::size_t{0}).Integer();
      if (IsWanted(key)) keys.push_back(key);
    }
    whole_ = rows->EOF_();
  }
  KnowThese(std::make_shared<const KnownContacts>(std::move(keys)));
}

void ContactRows::KnowThese(std::shared_ptr<const KnownContacts> known) {
  known_ = std::move(known);
  added_.clear();
  addedSlots_.clear();
  order_.resize(known_->Size());
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
  auto job = std::make_shared<ContactReading>();
  job->columns = columns_;
  job->keys = keys;
  job->fields = std::move(fields);
  job->selection = selection_;
  job->known = known_;
  due_ = false;
  touched_.clear();
  job->reader = session_.Db.OpenReader();
  if (atOnce) {
    job->Run([] { return true; });
    TakeOver(*job);
    return;
  }
  job_ = job;
  if (!job->fields.empty()) busy_ = std::make_unique<forms::BusyPointer>(session_.Host());
  work_ = session_.Machine.RunInBackground([job](const std::stop_token& stop) {
    job->Run([&stop] { return !stop.stop_requested(); });
    job->reader.reset();
  });
  looking_->SetEnabled(true);
}

void ContactRows::LookWhetherRead() {
  if (work_ == nullptr || !work_->HasEnded()) return;
  looking_->SetEnabled(false);
  work_.reset();
  busy_.reset();
  const std::shared_ptr<ContactReading> job = std::exchange(job_, nullptr);
  TakeOver(*job);
  if (due_) ReadAnew();
  if (OnReady) OnReady();
}

void ContactRows::TakeOver(ContactReading& job) {
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
    KnowThese(job.known);
    whole_ = true;
  } else {
    for (auto& [field, memory] : job.memories) {
      memory.Resize(known_->Size() + added_.size());
      memories_.insert_or_assign(field, std::move(memory));
    }
    // Those that the job did not know of.
    const auto known = static_cast<Slot>(known_->Size());
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
  const std::size_t known = known_->Size();
  return slot < known ? known_->KeyOf(slot) : added_[slot - known];
}

std::optional<Slot> ContactRows::SlotOf(std::int64_t key) const {
  if (const auto slot = known_->SlotOf(key)) return slot;
  const auto added = addedSlots_.find(key);
  return added == addedSlots_.end() ? std::nullopt : std::optional(added->second);
}

Slot ContactRows::SlotFor(std::int64_t key) {
  if (const auto slot = SlotOf(key)) return *slot;
  added_.push_back(key);
  const std::size_t slots = known_->Size() + added_.size();
  for (auto& [field, memory] : memories_) memory.Resize(slots);
  return addedSlots_[key] = static_cast<Slot>(slots - 1);
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

  const std::size_t slots = known_->Size() + added_.size();
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
