#include "dynaset.h"

#include <algorithm>

#include "dialect/convert.h"
#include "engine/recordset_errors.h"

namespace brenvo::file {
namespace {

constexpr std::int64_t kBlock = 256;

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
  connection_->Unregister(this);
  edit_.Cancel();
  keys_.Drop();
  connection_ = std::make_shared<Connection>();
}

void DynasetRows::RequireOpen() const { connection_->RequireOpen(); }

void DynasetRows::Requery() {
  RequireOpen();
  edit_.Cancel();
  keys_.Begin(*connection_);
  openingStamp_ = connection_->ChangeStamp();
  held_.Drop();
  askedAt_ = kNowhere;
  reached_ = 0;
  Stand(0);
}

void DynasetRows::Stand(std::int64_t place) {
  // Keys come in blocks, but opening reads no more than one.
  const bool there = keys_.Reach(place, place == 0 ? 0 : kBlock);
  gap_ = false;
  at_ = there ? place : keys_.Size();
  reached_ = std::max(reached_, std::min(at_ + 1, keys_.Size()));
}

void DynasetRows::MoveFirst() {
  RequireOpen();
  edit_.Cancel();
  Stand(0);
}

void DynasetRows::MoveLast() {
  RequireOpen();
  edit_.Cancel();
  keys_.ReachEnd();
  Stand(std::max<std::int64_t>(keys_.Size() - 1, 0));
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
  if (--at_ >= 0) keys_.Reach(at_);
}

bool DynasetRows::BOF() {
  RequireOpen();
  return keys_.Size() == 0 || (!gap_ && at_ < 0);
}

bool DynasetRows::EOF_() {
  RequireOpen();
  return keys_.Size() == 0 || (!gap_ && at_ >= keys_.Size());
}

std::int64_t DynasetRows::RecordCount() {
  RequireOpen();
  return keys_.Size() == 0 ? 0 : std::max<std::int64_t>(1, reached_);
}

std::int64_t DynasetRows::CurrentKey() const {
  RequireOpen();
  if (gap_) engine::FailRecordDeleted();
  if (at_ < 0 || at_ >= keys_.Size()) engine::FailNoCurrentRecord();
  return keys_.At(at_);
}

// Whoever walks through the rows, one after the other, asks each for the same columns: they are
// fetched ahead, twice as many each time, so that a walk which ends or changes what it walks
// through has read little in vain.
void DynasetRows::FetchFor(std::size_t column) {
  const std::int64_t key = keys_.At(at_);
  const std::int64_t stamp = connection_->ChangeStamp();
  const bool walking = at_ == askedAt_ + 1;
  if (!walking && at_ != askedAt_) asked_.assign(names_.size(), false);
  asked_[column] = true;
  ahead_ = walking && stamp == aheadStamp_ ? std::min(2 * ahead_, HeldRows::kMost) : 1;
  aheadStamp_ = stamp;
  if (ahead_ > 1) {
    const std::vector<std::int64_t> keys = keys_.Some(at_, ahead_);
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
  if (at_ >= 0 && at_ < keys_.Size() && keys_.At(at_) == key) return at_;
  return keys_.PlaceOf(key);
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
  const bool behindLast = !gap_ && at_ >= keys_.Size();
  keys_.Append(key);
  ++reached_;
  if (behindLast) at_ = keys_.Size();
}

void DynasetRows::CancelUpdate() {
  RequireOpen();
  edit_.Cancel();
}

void DynasetRows::Delete() {
  const std::int64_t key = CurrentKey();
  edit_.Cancel();
  DeleteRow(*connection_, *keyset_.table, key);
  keys_.Erase(at_);
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
    if (!keys_.Reach(place)) return -1;
    if (std::binary_search(matches.begin(), matches.end(), keys_.At(place))) return place;
  }
}

std::vector<engine::Value> DynasetRows::RowAt(std::int64_t place) {
  RequireOpen();
  std::vector<engine::Value> row;
  if (place < 0 || !keys_.Reach(place)) return row;
  row.resize(keyset_.columns.size());
  std::vector<engine::Value> parameters = keyset_.row.parameters;
  parameters.emplace_back(keys_.At(place));
  Running run(*connection_, keyset_.row.text, std::move(parameters));
  if (!run.Step()) return row;
  for (std::size_t i = 0; i < row.size(); ++i) {
    row[i] = run.Cell(static_cast<int>(i), keyset_.columns[i].type);
  }
  return row;
}

engine::Bookmark DynasetRows::BookmarkAt(std::int64_t place) {
  RequireOpen();
  if (place < 0 || !keys_.Reach(place)) engine::FailNoCurrentRecord();
  return {keys_.At(place)};
}

std::int64_t DynasetRows::TotalRows() {
  RequireOpen();
  keys_.ReachEnd();
  return keys_.Size();
}

}  // namespace brenvo::file
