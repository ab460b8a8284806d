#include "snapshot.h"

#include <algorithm>

#include "dialect/convert.h"
#include "engine/recordset_errors.h"

namespace brenvo::file {

SnapshotRows::SnapshotRows(std::shared_ptr<Connection> connection, std::string_view select)
    : connection_(std::move(connection)) {
  connection_->RequireOpen();
  query_ = TranslateQuery(connection_->Tables(), select);
  // The test for one row, which runs at every keystroke, asks for no order: only when the row is
  // looked at must it be the one entered first.
  orderOpen_ = query_.orderLeftOut;
  run_ = Running(*connection_, query_.sql.text, std::move(query_.sql.parameters));
  if (ReadOne()) {
    connection_->Register(this);
    reached_ = 1;
  }
}

SnapshotRows::~SnapshotRows() { connection_->Unregister(this); }

void SnapshotRows::Close() {
  run_ = Running();
  connection_->Unregister(this);
  rows_.Clear();
  connection_ = std::make_shared<Connection>();
}

void SnapshotRows::RequireOpen() const { connection_->RequireOpen(); }

bool SnapshotRows::ReadOne() {
  if (failure_) throw engine::DatabaseError(*failure_);
  if (complete_) return false;
  if (run_.Step()) {
    rows_.Append(run_.Handle());
    return true;
  }
  complete_ = true;
  run_ = Running();
  return false;
}

void SnapshotRows::SettleOrder() {
  if (!orderOpen_) return;
  orderOpen_ = false;
  if (rows_.Size() == 0 || !ReadOne()) return;
  // The first run is given back only after the second has begun, so that both see the same rows.
  Running ordered(*connection_, query_.sql.text + std::string(kOrderOfEntry), run_.Parameters());
  rows_.Clear();
  if (ordered.Step()) rows_.Append(ordered.Handle());
  run_ = std::move(ordered);
}

void SnapshotRows::ReadRest() {
  try {
    SettleOrder();
    while (ReadOne()) {
    }
  } catch (const engine::DatabaseError& failure) {
    failure_ = failure;
    run_ = Running();
  }
}

void SnapshotRows::Reach(std::int64_t place) {
  while (rows_.Size() <= place && ReadOne()) {
  }
  at_ = std::min(place, rows_.Size());
  reached_ = std::max(reached_, std::min(at_ + 1, rows_.Size()));
}

void SnapshotRows::MoveFirst() {
  RequireOpen();
  at_ = 0;
}

void SnapshotRows::MoveLast() {
  RequireOpen();
  SettleOrder();
  while (ReadOne()) {
  }
  Reach(std::max<std::int64_t>(rows_.Size() - 1, 0));
}

void SnapshotRows::MoveNext() {
  RequireOpen();
  if (EOF_()) engine::FailNoCurrentRecord();
  SettleOrder();
  Reach(at_ + 1);
}

void SnapshotRows::MovePrevious() {
  RequireOpen();
  if (BOF()) engine::FailNoCurrentRecord();
  --at_;
}

bool SnapshotRows::BOF() {
  RequireOpen();
  return at_ < 0 || rows_.Size() == 0;
}

bool SnapshotRows::EOF_() {
  RequireOpen();
  return at_ >= rows_.Size();
}

std::int64_t SnapshotRows::RecordCount() {
  RequireOpen();
  return reached_;
}

void SnapshotRows::RequireRecord() const {
  RequireOpen();
  if (at_ < 0 || at_ >= rows_.Size()) engine::FailNoCurrentRecord();
}

const std::vector<std::string>& SnapshotRows::Columns() const {
  if (names_.empty()) {
    for (const dialect::OutputColumn& column : query_.columns) names_.push_back(column.name);
  }
  return names_;
}

engine::Value SnapshotRows::Field(std::string_view column) {
  return Field(engine::PlaceOf(Columns(), column));
}

engine::Value SnapshotRows::Field(std::size_t column) {
  RequireRecord();
  if (column >= query_.columns.size()) engine::PlaceOf(Columns(), std::to_string(column));
  SettleOrder();
  RequireRecord();
  return FromRaw(rows_.Cell(at_, column), query_.columns[column].type);
}

engine::Bookmark SnapshotRows::GetBookmark() {
  RequireRecord();
  return {at_};
}

void SnapshotRows::SetBookmark(engine::Bookmark bookmark) {
  RequireOpen();
  if (bookmark.key < 0 || bookmark.key >= rows_.Size()) engine::FailRecordDeleted();
  at_ = bookmark.key;
}

}  // namespace brenvo::file
