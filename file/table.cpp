#include "table.h"

#include <algorithm>

#include "dialect/convert.h"
#include "dialect/folding.h"
#include "engine/recordset_errors.h"
#include "read_schema.h"
#include "sqlite_functions.h"

namespace brenvo::file {
namespace {

// The order in which an index holds its values: Null, numbers, texts without regard to the case of
// ASCII letters.
int Compare(const engine::Value& a, const engine::Value& b) {
  const auto* left = std::get_if<std::string>(&a.Get());
  const auto* right = std::get_if<std::string>(&b.Get());
  if (left != nullptr && right != nullptr) {
    const int order = sqlite3_strnicmp(left->c_str(), right->c_str(),
                                       static_cast<int>(std::min(left->size(), right->size())));
    if (order != 0) return order;
    return left->size() < right->size() ? -1 : left->size() > right->size() ? 1 : 0;
  }
  const auto rank = [](const engine::Value& value, const std::string* text) {
    return value.IsNull() ? 0 : text == nullptr ? 1 : 2;
  };
  const int ranks = rank(a, left) - rank(b, right);
  if (ranks != 0 || a.IsNull()) return ranks;
  return a.Number() < b.Number() ? -1 : a.Number() > b.Number() ? 1 : 0;
}

}  // namespace

TableRows::TableRows(std::shared_ptr<Connection> connection, std::string_view name)
    : connection_(std::move(connection)), table_(&connection_->RequireTable(name)), edit_(*table_) {
  for (const dialect::Column& column : table_->columns) names_.push_back(column.name);
  UseIndex(nullptr);
  MoveFirst();
}

void TableRows::Close() {
  edit_.Cancel();
  connection_ = std::make_shared<Connection>();
}

void TableRows::RequireOpen() const { connection_->RequireOpen(); }

void TableRows::UseIndex(const dialect::Index* index) {
  index_ = index;
  parts_.clear();
  if (index != nullptr) {
    for (const dialect::IndexPart& part : index->parts) parts_.push_back(PartSql(*table_, part));
  }
  head_ = "SELECT rowid";
  for (const dialect::Column& column : table_->columns) head_ += ", " + column.quoted;
  for (const std::string& part : parts_) head_ += ", " + part;
  head_ += " FROM " + table_->quoted;
}

bool TableRows::Load(const std::string& condition, std::vector<engine::Value> parameters,
                     std::size_t firstPart, Direction direction) {
  std::string sql = head_;
  if (!condition.empty()) sql.append(" WHERE ").append(condition);
  const std::string_view order = direction == Direction::kForward ? "" : " DESC";
  sql += " ORDER BY ";
  for (std::size_t i = firstPart; i < Parts(); ++i) sql.append(Part(i)).append(order).append(", ");
  sql.append("rowid").append(order).append(" LIMIT 1");

  Running run(*connection_, sql, std::move(parameters));
  if (!run.Step()) return false;
  row_.key = run.Key();
  const std::size_t columns = table_->columns.size();
  row_.cells.resize(columns);
  for (std::size_t i = 0; i < columns; ++i) {
    row_.cells[i] = run.Cell(static_cast<int>(i) + 1, dialect::ValueType::kAny);
  }
  row_.indexKey.resize(Parts());
  for (std::size_t i = 0; i < Parts(); ++i) {
    row_.indexKey[i] = run.Cell(static_cast<int>(columns + i) + 1, dialect::ValueType::kAny);
  }
  rowStamp_ = connection_->ChangeStamp();
  return true;
}

bool TableRows::LoadByKey(std::int64_t key) {
  return Load("rowid = ?", {engine::Value(key)}, Parts(), Direction::kForward);
}

void TableRows::Equal(std::string& condition, std::vector<engine::Value>& parameters,
                      const std::vector<engine::Value>& key, std::size_t parts, bool folded) const {
  for (std::size_t i = 0; i < parts; ++i) {
    if (!condition.empty()) condition += " AND ";
    condition += Part(i);
    if (key[i].IsNull()) {
      condition += " IS NULL";
      continue;
    }
    const auto* text = std::get_if<std::string>(&key[i].Get());
    if (folded && text != nullptr && dialect::NeedsFolding(*text)) {
      // The index does not fold such letters: the rows are looked through in its order.
      condition.append(" COLLATE ").append(kFoldingOrder);
    }
    condition += " = ?";
    parameters.push_back(key[i]);
  }
}

// Part by part from the last one on, so that each look is one step into the index.
bool TableRows::LoadBehind(const std::vector<engine::Value>& key, std::size_t parts,
                           Direction direction) {
  for (std::size_t part = parts; part-- > 0;) {
    std::string equal;
    std::vector<engine::Value> parameters;
    Equal(equal, parameters, key, part, false);
    if (!equal.empty()) equal += " AND ";
    if (key[part].IsNull()) {
      if (direction == Direction::kForward &&
          Load(equal + Part(part) + " IS NOT NULL", parameters, part, direction)) {
        return true;
      }
      continue;
    }
    std::vector<engine::Value> beyond = parameters;
    beyond.push_back(key[part]);
    const char* const symbol = direction == Direction::kForward ? " > ?" : " < ?";
    if (Load(equal + Part(part) + symbol, std::move(beyond), part, direction)) return true;
    if (direction == Direction::kBackward &&
        Load(equal + Part(part) + " IS NULL", std::move(parameters), part, direction)) {
      return true;
    }
  }
  return false;
}

bool TableRows::LoadNeighbour(Direction direction) {
  const Row from = row_;
  std::string equal;
  std::vector<engine::Value> parameters;
  Equal(equal, parameters, from.indexKey, Parts(), false);
  if (!equal.empty()) equal += " AND ";
  parameters.emplace_back(from.key);
  equal += direction == Direction::kForward ? "rowid > ?" : "rowid < ?";
  if (!Load(equal, std::move(parameters), Parts(), direction) &&
      !LoadBehind(from.indexKey, Parts(), direction)) {
    return false;
  }
  // A damaged file may lead back to where the walk has been, and so round for ever.
  const int order = OrderOf(from, row_);
  if (direction == Direction::kForward ? order < 0 : order > 0) return true;
  connection_->RefuseWrites();
  throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                              "Il file del database è danneggiato (tabella " + table_->name + ").");
}

int TableRows::OrderOf(const Row& a, const Row& b) {
  for (std::size_t i = 0; i < a.indexKey.size(); ++i) {
    if (const int order = Compare(a.indexKey[i], b.indexKey[i]); order != 0) return order;
  }
  return a.key < b.key ? -1 : a.key > b.key ? 1 : 0;
}

void TableRows::MoveToEnd(Direction direction) {
  RequireOpen();
  edit_.Cancel();
  position_ = Load("", {}, 0, direction) ? Position::kRow : Position::kEmpty;
}

void TableRows::MoveFirst() { MoveToEnd(Direction::kForward); }
void TableRows::MoveLast() { MoveToEnd(Direction::kBackward); }

void TableRows::Move(Direction direction) {
  RequireOpen();
  edit_.Cancel();
  const bool forward = direction == Direction::kForward;
  switch (position_) {
    case Position::kRow:
      // The row may have been changed, and stands elsewhere in the index now.
      if (rowStamp_ != connection_->ChangeStamp()) LoadByKey(row_.key);
      [[fallthrough]];
    case Position::kGap:
      if (LoadNeighbour(direction)) {
        position_ = Position::kRow;
      } else {
        position_ = forward ? Position::kEnd : Position::kBegin;
      }
      return;
    case Position::kBegin:
      if (forward) return MoveFirst();
      break;
    case Position::kEnd:
      if (!forward) return MoveLast();
      break;
    default:
      break;
  }
  engine::FailNoCurrentRecord();
}

void TableRows::MoveNext() { Move(Direction::kForward); }
void TableRows::MovePrevious() { Move(Direction::kBackward); }

bool TableRows::IsEmpty() {
  return !Running(*connection_, "SELECT 1 FROM " + table_->quoted + " LIMIT 1").Step();
}

bool TableRows::BOF() {
  RequireOpen();
  if (position_ == Position::kGap) return IsEmpty();
  return position_ == Position::kBegin || position_ == Position::kEmpty;
}

bool TableRows::EOF_() {
  RequireOpen();
  if (position_ == Position::kGap) return IsEmpty();
  return position_ == Position::kEnd || position_ == Position::kEmpty;
}

std::int64_t TableRows::RecordCount() {
  RequireOpen();
  const std::int64_t stamp = connection_->ChangeStamp();
  if (countStamp_ == stamp) return count_;
  Running run(*connection_, "SELECT count(*) FROM " + table_->quoted);
  run.Step();
  count_ = run.Key();
  countStamp_ = stamp;
  return count_;
}

void TableRows::Refresh() {
  RequireOpen();
  if (position_ == Position::kGap) engine::FailRecordDeleted();
  if (position_ != Position::kRow) engine::FailNoCurrentRecord();
  if (rowStamp_ == connection_->ChangeStamp()) return;
  if (!LoadByKey(row_.key)) engine::FailRecordDeleted();
}

engine::Value TableRows::Field(std::string_view column) {
  return Field(engine::PlaceOf(names_, column));
}

engine::Value TableRows::Field(std::size_t column) {
  RequireOpen();
  if (column >= names_.size()) engine::PlaceOf(names_, std::to_string(column));
  if (edit_.Has(column)) return edit_.Get(column);
  Refresh();
  return FromRaw(row_.cells[column], dialect::TypeOfColumn(table_->columns[column].type));
}

engine::Bookmark TableRows::GetBookmark() {
  Refresh();
  return {row_.key};
}

void TableRows::SetBookmark(engine::Bookmark bookmark) {
  RequireOpen();
  edit_.Cancel();
  if (!LoadByKey(bookmark.key)) engine::FailRecordDeleted();
  position_ = Position::kRow;
}

void TableRows::AddNew() {
  RequireOpen();
  edit_.BeginNew();
}

void TableRows::Edit() {
  edit_.Cancel();
  Refresh();
  edit_.BeginChange(row_.key);
}

void TableRows::Set(std::string_view column, const engine::Value& value) {
  RequireOpen();
  edit_.Set(engine::PlaceOf(names_, column), value);
}

void TableRows::Update() {
  RequireOpen();
  const bool isNew = edit_.IsNew();
  lastModified_ = {edit_.Write(*connection_)};
  if (isNew && position_ == Position::kEmpty) position_ = Position::kEnd;
}

void TableRows::CancelUpdate() {
  RequireOpen();
  edit_.Cancel();
}

void TableRows::Delete() {
  edit_.Cancel();
  Refresh();
  DeleteRow(*connection_, *table_, row_.key);
  position_ = Position::kGap;
}

engine::Bookmark TableRows::LastModified() {
  RequireOpen();
  return lastModified_;
}

void TableRows::SetIndex(std::string_view name) {
  RequireOpen();
  const dialect::Index* index = name.empty() ? nullptr : table_->FindIndex(name);
  if (index == nullptr && !name.empty()) {
    throw engine::DatabaseError(
        engine::DatabaseError::kNoSuchIndex,
        "La tabella '" + table_->name + "' non ha un indice '" + std::string(name) + "'.");
  }
  UseIndex(index);
  MoveFirst();
}

void TableRows::Seek(engine::SeekComparison comparison, const std::vector<engine::Value>& key) {
  RequireOpen();
  edit_.Cancel();
  if (index_ == nullptr || key.empty()) {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "La ricerca richiede un indice e almeno un valore.");
  }
  const std::size_t parts = std::min(key.size(), Parts());
  std::vector<engine::Value> values;
  for (std::size_t i = 0; i < parts; ++i) {
    values.push_back(dialect::ToKey(key[i], table_->columns[index_->parts[i].column].type));
  }
  std::string equal;
  std::vector<engine::Value> parameters;
  Equal(equal, parameters, values, parts, comparison == engine::SeekComparison::kEqual);
  const bool found = Load(equal, std::move(parameters), parts, Direction::kForward) ||
                     (comparison == engine::SeekComparison::kGreaterOrEqual &&
                      LoadBehind(values, parts, Direction::kForward));
  noMatch_ = !found;
  position_ = found ? Position::kRow : Position::kNone;
}

}  // namespace brenvo::file
