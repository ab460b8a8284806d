// A database file as a store.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "engine/store.h"

namespace brenvo {

class Connection;

class FileStore final : public Store {
 public:
  // See OpenDatabaseFile.
  explicit FileStore(const std::filesystem::path& file);
  ~FileStore() override;

  std::int64_t Execute(std::string_view statement) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void Rollback() override;
  bool InTransaction() const override;
  std::unique_ptr<Table> OpenTable(std::string_view name) override;
  std::unique_ptr<Snapshot> OpenSnapshot(std::string_view select) override;
  std::unique_ptr<Dynaset> OpenDynaset(std::string_view select) override;
  std::unique_ptr<RowAppender> OpenAppender(std::string_view table) override;
  void Watch(std::function<bool()> goOn) override;
  void RefuseWrites() override;
  EngineCounters Counters() const override;
  std::string QueryPlan(std::string_view select) override;

 private:
  std::shared_ptr<Connection> connection_;  // which recordsets keep when the file is closed
};

}  // namespace brenvo
