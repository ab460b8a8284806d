#include "dynaset.h"

#include <algorithm>
#include <limits>

#include "dialect/convert.h"
#include "engine/recordset_errors.h"

namespace brenvo::file {
namespace {

constexpr std::int64_t kBlock = 256;
constexpr std::int64_t kAll = std::numeric_limits<std::int64_t>::max();

}  // namespace

DynasetRows::DynasetRows(std::shared_ptr<Connection> connection, std::string_view select)
    : connection_((connection->RequireOpen(), std::move(connection))),
      select_(select),
      keyset_(TranslateKeyset(connection_->Tables(), select)),
      edit_(*keyset_.table) {
  for (const dialect::OutputColumn& column : keyset_.columns) names_.push_back(column.name);
  asked_.assign(names_.size(), false);
  Requery();
  connection_->Register(this);
}

DynasetRows::~DynasetRows() { connection_->Unregister(this); }

void DynasetRows::Close() {
  run_ = Running();
  connection_->Unregister(this);
  edit_.Cancel();
  keys_.clear();
  connection_ = std::make_shared<Connection>();
}

void DynasetRows::RequireOpen() const { connection_->RequireOpen(); }

void DynasetRows::Requery() {
  RequireOpen();
  edit_.Cancel();
  run_ = Running();
  run_ = Running(*connection_, keyset_.keys.text, keyset_.keys.parameters);
  keys_.clear();
  complete_ = false;
  failure_.reset();
  openingStamp_ = connection_->ChangeStamp();
  held_.Drop();
  askedAt_ = kNowhere;
  reached_ = 0;
  ReadKeys(1);
  Stand(0);
}

void DynasetRows::ReadKeys(std::int64_t count) {
  while (!complete_ && Size() < count) {
    if (failure_) throw engine::DatabaseError(*failure_);
    if (run_.Step()) {
      keys_.push_back(run_.Key());
    } else {
      complete_ = true;
      run_ = Running();
    }
  }
}

void DynasetRows::ReadRest() {
  try {
    ReadKeys(kAll);
  } catch (const engine::DatabaseError& failure) {
    failure_ = failure;
    run_ = Running();
  }
}

void DynasetRows::Stand(std::int64_t place) {
  // Keys come in blocks, but opening reads no more than one.
  if (place >= Size()) ReadKeys(std::min(place, kAll - kBlock) + (place == 0 ? 1 : kBlock));
  gap_ = false;
  at_ = std::min(place, Size());
  reached_ = std::max(reached_, std::min(at_ + 1, Size()));
}

void DynasetRows::MoveFirst() {
  RequireOpen();
  edit_.Cancel();
  Stand(0);
}

void DynasetRows::MoveLast() {
  RequireOpen();
  edit_.Cancel();
  ReadKeys(kAll);
  Stand(std::max<std::int64_t>(Size() - 1, 0));
}

void DynasetRows::MoveNext() {
  RequireOpen();
  edit_.Cancel();
  if (gap_) return Stand(at_);
  if (EOF_()) engine::FailNoCurrentRecord();
  Stand(at_ + 1);
}

void DynasetRows::MovePrevious() {
  RequireOpen();
  edit_.Cancel();
  if (!gap_ && BOF()) engine::FailNoCurrentRecord();
  gap_ = false;
  --at_;
}

bool DynasetRows::BOF() {
  RequireOpen();
  return keys_.empty() || (!gap_ && at_ < 0);
}

bool DynasetRows::EOF_() {
  RequireOpen();
  return keys_.empty() || (!gap_ && at_ >= Size());
}

std::int64_t DynasetRows::RecordCount() {
  RequireOpen();
  return keys_.empty() ? 0 : std::max<std::int64_t>(1, reached_);
}

std::int64_t DynasetRows::CurrentKey() const {
  RequireOpen();
  if (gap_) engine::FailRecordDeleted();
  if (at_ < 0 || at_ >= Size()) engine::FailNoCurrentRecord();
  return KeyAt(at_);
}

// Whoever walks through the rows, one after the other, asks each for the same columns: they are
// fetched ahead, twice as many each time, so that a walk which ends or changes what it walks
// through has read little in vain.
void DynasetRows::FetchFor(std::size_t column) {
  const std::int64_t key = KeyAt(at_);
  const std::int64_t stamp = connection_->ChangeStamp();
  const bool walking = at_ == askedAt_ + 1;
  if (!walking && at_ != askedAt_) asked_.assign(names_.size(), false);
  asked_[column] = true;
  ahead_ = walking && stamp == aheadStamp_ ? std::min(2 * ahead_, HeldRows::kMost) : 1;
  aheadStamp_ = stamp;
  if (ahead_ > 1) {
    const auto first = static_cast<std::size_t>(at_);
    const auto keys = std::span(keys_).subspan(first, std::min(ahead_, keys_.size() - first));
    if (held_.FetchAhead(*connection_, keys, asked_)) return;
  }
  held_.Fetch(*connection_, key);
}

engine::Value DynasetRows::Field(std::string_view column) {
  return Field(engine::PlaceOf(names_, column));
}

engine::Value DynasetRows::Field(std::size_t column) {
  RequireOpen();
  if (column >= names_.size()) engine::PlaceOf(names_, std::to_string(column));
  const std::size_t tableColumn = keyset_.columns[column].tableColumn;
  if (tableColumn != dialect::TableSchema::kNone && edit_.Has(tableColumn))
    return edit_.Get(tableColumn);
  const std::int64_t key = CurrentKey();
  if (!held_.Has(*connection_, key, column)) {
    FetchFor(column);
    if (!held_.Has(*connection_, key)) engine::FailRecordDeleted();
  }
  askedAt_ = at_;
  asked_[column] = true;
  return FromRaw(held_.Cell(column), keyset_.columns[column].type);
}

std::int64_t DynasetRows::PlaceOfKey(std::int64_t key) {
  if (at_ >= 0 && at_ < Size() && KeyAt(at_) == key) return at_;
  for (std::int64_t read = 0;;) {
    // From the back, where what was added through the dynaset stands.
    for (std::int64_t place = Size(); place-- > read;) {
      if (KeyAt(place) == key) return place;
    }
    if (complete_) return -1;
    read = Size();
    ReadKeys(read + kBlock);
  }
}

engine::Bookmark DynasetRows::GetBookmark() { return {CurrentKey()}; }

void DynasetRows::SetBookmark(engine::Bookmark bookmark) {
  RequireOpen();
  edit_.Cancel();
  const std::int64_t place = PlaceOfKey(bookmark.key);
  if (place < 0) engine::FailRecordDeleted();
  Stand(place);
}

void DynasetRows::AddNew() {
  RequireOpen();
  edit_.BeginNew();
}

void DynasetRows::Edit() {
  const std::int64_t key = CurrentKey();
  edit_.Cancel();
  if (!held_.Has(*connection_, key)) held_.Fetch(*connection_, key);
  if (!held_.Has(*connection_, key)) engine::FailRecordDeleted();
  edit_.BeginChange(key);
}

void DynasetRows::Set(std::string_view column, const engine::Value& value) {
  RequireOpen();
  const std::size_t tableColumn = keyset_.columns[engine::PlaceOf(names_, column)].tableColumn;
  if (tableColumn == dialect::TableSchema::kNone) {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "La colonna '" + std::string(column) + "' non si può scrivere.");
  }
  edit_.Set(tableColumn, value);
}

void DynasetRows::Update() {
  RequireOpen();
  const bool isNew = edit_.IsNew();
  const std::int64_t key = edit_.Write(*connection_);
  lastModified_ = {key};
  if (!isNew) return;
  const bool behindLast = !gap_ && at_ >= Size();
  keys_.push_back(key);
  ++reached_;
  if (behindLast) at_ = Size();
}

void DynasetRows::CancelUpdate() {
  RequireOpen();
  edit_.Cancel();
}

void DynasetRows::Delete() {
  const std::int64_t key = CurrentKey();
  edit_.Cancel();
  DeleteRow(*connection_, *keyset_.table, key);
  keys_.erase(keys_.begin() + at_);
  reached_ = std::max<std::int64_t>(0, reached_ - 1);
  gap_ = true;
}

engine::Bookmark DynasetRows::LastModified() {
  RequireOpen();
  return lastModified_;
}

void DynasetRows::FindFirst(std::string_view condition) {
  RequireOpen();
  edit_.Cancel();
  const std::int64_t place = FindPlace(condition);
  noMatch_ = place < 0;
  if (!noMatch_) Stand(place);
}

std::int64_t DynasetRows::FindPlace(std::string_view condition) {
  // As long as nothing has changed since the keys were read, the first row in the order of the
  // statement is the first of them.
  const bool inOrder = connection_->ChangeStamp() == openingStamp_;
  Sql find = TranslateFind(connection_->Tables(), select_, condition, inOrder);
  std::vector<std::int64_t> matches;
  {
    Running run(*connection_, find.text, std::move(find.parameters));
    while (run.Step()) matches.push_back(run.Key());
  }
  if (matches.empty()) return -1;
  if (matches.size() == 1) {
    const std::int64_t place = PlaceOfKey(matches.front());
    // Another program may have added it since.
    if (place >= 0 || !inOrder) return place;
    find = TranslateFind(connection_->Tables(), select_, condition, false);
    matches.clear();
    Running run(*connection_, find.text, std::move(find.parameters));
    while (run.Step()) matches.push_back(run.Key());
  }
  std::sort(matches.begin(), matches.end());
  for (std::int64_t place = 0;; ++place) {
    ReadKeys(place + 1);
    if (place >= Size()) return -1;
    if (std::binary_search(matches.begin(), matches.end(), KeyAt(place))) return place;
  }
}

std::vector<engine::Value> DynasetRows::RowAt(std::int64_t place) {
  RequireOpen();
  std::vector<engine::Value> row;
  if (place < 0) return row;
  ReadKeys(place + 1);
  if (place >= Size()) return row;
  row.resize(keyset_.columns.size());
  std::vector<engine::Value> parameters = keyset_.row.parameters;
  parameters.emplace_back(KeyAt(place));
  Running run(*connection_, keyset_.row.text, std::move(parameters));
  if (!run.Step()) return row;
  for (std::size_t i = 0; i < row.size(); ++i) {
    row[i] = run.Cell(static_cast<int>(i), keyset_.columns[i].type);
  }
  return row;
}

engine::Bookmark DynasetRows::BookmarkAt(std::int64_t place) {
  RequireOpen();
  ReadKeys(place + 1);
  if (place < 0 || place >= Size()) engine::FailNoCurrentRecord();
  return {KeyAt(place)};
}

std::int64_t DynasetRows::TotalRows() {
  RequireOpen();
  ReadKeys(kAll);
  return Size();
}

}  // namespace brenvo::file
