// A database file as a store.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "engine/store.h"

namespace brenvo::file {

class Connection;

class FileStore final : public engine::Store {
 public:
  // See OpenDatabaseFile.
  explicit FileStore(const std::filesystem::path& file);
  ~FileStore() override;

  std::int64_t Execute(std::string_view statement) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void Rollback() override;
  void PutOffIndexes(std::string_view table) override;
  bool InTransaction() const override;
  std::unique_ptr<engine::Table> OpenTable(std::string_view name) override;
  std::unique_ptr<engine::Snapshot> OpenSnapshot(std::string_view select) override;
  std::unique_ptr<engine::Dynaset> OpenDynaset(std::string_view select) override;
  std::unique_ptr<engine::RowAppender> OpenAppender(std::string_view table) override;
  std::unique_ptr<engine::Reader> OpenReader() override;
  void WhenUnread(std::function<void()> tell) override;
  bool ReadOn(std::int64_t rows) override;
  void Watch(std::function<bool()> goOn) override;
  void RefuseWrites() override;
  std::int64_t DataVersion() override;
  engine::EngineCounters Counters() const override;
  std::string QueryPlan(std::string_view select) override;

 private:
  std::filesystem::path file_;
  std::shared_ptr<Connection> connection_;  // which recordsets keep when the file is closed
};

}  // namespace brenvo::file
