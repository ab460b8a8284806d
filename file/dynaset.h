// The rows of a SELECT over one table, held by their keys.
#pragma once

#include <memory>

#include "connection.h"
#include "held_keys.h"
#include "held_rows.h"
#include "record_edit.h"
#include "translate.h"

namespace brenvo::file {

class DynasetRows final : public engine::Dynaset, private LazyReader {
 public:
  DynasetRows(std::shared_ptr<Connection> connection, std::string_view select);
  ~DynasetRows() override;

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

  void FindFirst(std::string_view condition) override;
  bool NoMatch() const override { return noMatch_; }
  void Requery() override;
  std::vector<engine::Value> RowAt(std::int64_t place) override;
  engine::Bookmark BookmarkAt(std::int64_t place) override;
  std::int64_t TotalRows() override;

 private:
  void ReadRest() override { keys_.ReadRest(); }
  bool ReadOn(std::int64_t rows) override { return keys_.ReadOn(rows); }
  const std::vector<const dialect::TableSchema*>& TablesRead() const override {
    return keyset_.tables;
  }

  void RequireOpen() const;
  std::int64_t CurrentKey() const;
  void Stand(std::int64_t place);
  // The place of a key; -1 when it is not among them.
  std::int64_t PlaceOfKey(std::int64_t key);
  // Holds the current row, with this column at least, and what is likely to be asked for next.
  void FetchFor(std::size_t column);
  std::int64_t FindPlace(std::string_view condition);

  std::shared_ptr<Connection> connection_;
  std::string select_;
  Keyset keyset_;
  std::vector<std::string> names_;
  RecordEdit edit_;
  HeldKeys keys_{keyset_};
  std::int64_t openingStamp_ = 0;

  std::int64_t at_ = 0;  // -1 before the first; the number of keys behind the last
  bool gap_ = false;     // between at_ - 1 and at_, where a row was deleted
  std::int64_t reached_ = 0;
  bool noMatch_ = false;
  engine::Bookmark lastModified_;

  HeldRows held_{keyset_};
  // Where a row was asked for last, and what was asked of the rows that were walked through up to
  // there; kNowhere after a Requery.
  static constexpr std::int64_t kNowhere = -2;
  std::int64_t askedAt_ = kNowhere;
  std::vector<bool> asked_;
  std::size_t ahead_ = 1;  // rows that were fetched together last
  std::int64_t aheadStamp_ = -1;
};

}  // namespace brenvo::file
