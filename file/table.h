// A whole table, walked along its current index.
#pragma once

#include <memory>

#include "connection.h"
#include "record_edit.h"

namespace brenvo::file {

class TableRows final : public engine::Table {
 public:
  TableRows(std::shared_ptr<Connection> connection, std::string_view name);

  void MoveFirst() override;
  void MoveLast() override;
  void MoveNext() override;
  void MovePrevious() override;
  bool BOF() override;
  bool EOF_() override;
  std::int64_t RecordCount() override;
  const std::vector<std::string>& Columns() const override { return names_; }
  engine::Value Field(std::string_view column) override;
  engine::Value Field(std::size_t column) override;
  engine::Bookmark GetBookmark() override;
  void SetBookmark(engine::Bookmark bookmark) override;
  void Close() override;

  void AddNew() override;
  void Edit() override;
  void Set(std::string_view column, const engine::Value& value) override;
  void Update() override;
  void CancelUpdate() override;
  void Delete() override;
  engine::Bookmark LastModified() override;

  void SetIndex(std::string_view name) override;
  void Seek(engine::SeekComparison comparison, const std::vector<engine::Value>& key) override;
  bool NoMatch() const override { return noMatch_; }

 private:
  enum class Position {
    kRow,
    kGap,  // where row_ was until it was deleted
    kBegin,
    kEnd,
    kEmpty,  // there was no row to stand on
    kNone,   // after a Seek without a match
  };
  enum class Direction { kForward, kBackward };

  struct Row {
    std::int64_t key = 0;
    std::vector<engine::Value> cells;     // as the file holds them
    std::vector<engine::Value> indexKey;  // the parts of the current index, likewise
  };

  void RequireOpen() const;
  std::size_t Parts() const { return parts_.size(); }
  const std::string& Part(std::size_t part) const { return parts_[part]; }
  void UseIndex(const dialect::Index* index);
  // Takes the first row that meets the condition, in the order of the parts from `firstPart` on, as
  // row_; false when there is none, and row_ stays.
  bool Load(const std::string& condition, std::vector<engine::Value> parameters,
            std::size_t firstPart, Direction direction);
  bool LoadByKey(std::int64_t key);
  // Below 0 where a stands before b in the order of the index.
  static int OrderOf(const Row& a, const Row& b);
  // The same for the row next to row_ in the order of the index...
  bool LoadNeighbour(Direction direction);
  // ...and for the first one behind all that begin with `parts` parts of the key, Nulls before all
  // else.
  bool LoadBehind(const std::vector<engine::Value>& key, std::size_t parts, Direction direction);
  // Adds "the first `parts` parts equal those of the key" to a condition; `folded` also where a
  // text holds letters that the index does not fold.
  void Equal(std::string& condition, std::vector<engine::Value>& parameters,
             const std::vector<engine::Value>& key, std::size_t parts, bool folded) const;
  void MoveToEnd(Direction direction);
  void Move(Direction direction);
  void Refresh();
  bool IsEmpty();

  std::shared_ptr<Connection> connection_;
  const dialect::TableSchema* table_;
  std::vector<std::string> names_;
  const dialect::Index* index_ = nullptr;
  std::vector<std::string> parts_;  // of the current index, as SQL
  std::string head_;                // "SELECT ... FROM ..." of a row with the parts of its key
  RecordEdit edit_;
  Position position_ = Position::kEmpty;
  Row row_;
  std::int64_t rowStamp_ = -1;
  bool noMatch_ = false;
  engine::Bookmark lastModified_;
  std::int64_t count_ = 0;
  std::int64_t countStamp_ = -1;
};

}  // namespace brenvo::file
