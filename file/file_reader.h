// A database file read from beside whoever works on it.
#pragma once

#include <filesystem>
#include <memory>

#include "connection.h"
#include "engine/reader.h"

namespace brenvo::file {

class FileReader final : public engine::Reader {
 public:
  // A file that this process has open already. DatabaseError when it cannot be opened again.
  FileReader(const std::filesystem::path& file, const dialect::Schema& tables);

  bool ForEach(std::string_view select,
               const std::function<bool(engine::Reader::Row& row)>& see) override;

 private:
  Connection connection_;
};

}  // namespace brenvo::file
