// Rows of the file database: table handles, dynasets and snapshots.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/database_error.h"
#include "engine/value.h"

namespace brenvo::engine {

// Marks a row: of a table or dynaset by its key, of a snapshot by its place.
struct Bookmark {
  std::int64_t key = 0;
  friend bool operator==(Bookmark, Bookmark) = default;
};

// Rows with a current record. BOF and EOF are both true when there are no rows; a new recordset
// stands on its first row, if any. A move past either end stands on that mark; a further move
// beyond it, or reading where there is no record, is DatabaseError 3021; MoveFirst and MoveLast
// without rows are none. Reading a row that was deleted is DatabaseError 3167. Any use after the
// database or the recordset is closed is DatabaseError 3420.
class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual void MoveFirst() = 0;
  virtual void MoveLast() = 0;
  virtual void MoveNext() = 0;
  virtual void MovePrevious() = 0;
  virtual bool BOF() = 0;
  virtual bool EOF_() = 0;
  // Rows of a table; rows reached so far of a dynaset or snapshot, all of them after MoveLast.
  // It is 0 exactly when there are no rows.
  virtual std::int64_t RecordCount() = 0;

  virtual const std::vector<std::string>& Columns() const = 0;
  // A column of the current record, its name without regard to case; DatabaseError 3265 when
  // there is no such column.
  virtual Value Field(std::string_view column) = 0;
  virtual Value Field(std::size_t column) = 0;
  Value operator[](std::string_view column) { return Field(column); }

  virtual Bookmark GetBookmark() = 0;
  // DatabaseError 3167 when the row is gone.
  virtual void SetBookmark(Bookmark bookmark) = 0;
  virtual void Close() = 0;
};

// A read-only result, read row by row as it is moved through; nothing else can be opened by it,
// whatever the statement says (DatabaseError 3219).
class Snapshot : public Recordset {};

// A recordset that can be written.
class EditableRecordset : public Recordset {
 public:
  // A new record with every column Null (yes/no columns false), or a copy of the current one.
  // Neither touches the file before Update; any move drops it.
  virtual void AddNew() = 0;
  virtual void Edit() = 0;
  // A column of the record being written, converted to the column's type. DatabaseError 3020
  // without AddNew or Edit, 3265 when there is no such column, 3421 when it cannot hold the value,
  // 3219 for a counter and for a column that is worked out.
  virtual void Set(std::string_view column, const Value& value) = 0;
  // Writes it, and returns when it is safe on disk (inside a transaction: when that commits).
  // DatabaseError 3022 when a unique key would repeat: the record is dropped, nothing is written;
  // 3020 without AddNew or Edit.
  // After AddNew the current record is the one before it; see LastModified.
  virtual void Update() = 0;
  virtual void CancelUpdate() = 0;
  // The current record goes; the position stays on the gap, and MoveNext leads to the next row,
  // MovePrevious to the one before. Neither mark is true on a gap while there are rows.
  virtual void Delete() = 0;
  // The row that Update wrote last.
  virtual Bookmark LastModified() = 0;
};

// The rows of a SELECT over one table. It holds their keys as they were on opening, and fetches
// each row when it is asked for; rows added through it stand at its end.
class Dynaset : public EditableRecordset {
 public:
  // The first row, in the dynaset's order, that meets a condition like that of a WHERE; NoMatch
  // tells when there is none, and the position is then as before.
  virtual void FindFirst(std::string_view condition) = 0;
  virtual bool NoMatch() const = 0;
  // Runs the SELECT again and stands on the first row.
  virtual void Requery() = 0;
  // For grids: the row at a place counted from 0, fetched without moving the current record;
  // empty when the place is past the end, all Nulls when the row is gone. Reaching a place reads no
  // rows before it, only keys.
  virtual std::vector<Value> RowAt(std::int64_t place) = 0;
  virtual Bookmark BookmarkAt(std::int64_t place) = 0;
  // All of them, counted to the end.
  virtual std::int64_t TotalRows() = 0;
};

enum class SeekComparison { kEqual, kGreaterOrEqual };

// A whole table, in the order of its current index; without one, in the order of entry.
class Table : public EditableRecordset {
 public:
  // DatabaseError 3015 when the table has no such index; empty means none.
  virtual void SetIndex(std::string_view name) = 0;
  // The first row of the index whose key is equal, or at or behind the values; fewer values than
  // the index has columns compare its leading part, and further ones are not looked at. A text
  // for a number column counts by its leading number. NoMatch tells when there is none, and there
  // is then no current record. DatabaseError 3219 without an index.
  virtual void Seek(SeekComparison comparison, const std::vector<Value>& key) = 0;
  void Seek(std::string_view comparison, const std::vector<Value>& key) {
    Seek(comparison == "=" ? SeekComparison::kEqual : SeekComparison::kGreaterOrEqual, key);
  }
  virtual bool NoMatch() const = 0;
};

// New rows of a table through one statement that stays compiled: for those who bring in thousands.
class RowAppender {
 public:
  virtual ~RowAppender() = default;
  // Stores a row and returns its key: a value for each column but the counter, in the order of the
  // table, converted to the column's type; columns left out at the end are Null. DatabaseError 3022
  // when a unique key would repeat; nothing is stored then.
  virtual std::int64_t Append(const std::vector<Value>& row) = 0;
};

}  // namespace brenvo::engine
