// A copy of a database that is in use, made in slices between which the work on it goes on.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace brenvo::file {

class OnlineCopy {
 public:
  // Begins to copy the database `from` as it stands now; later changes are not in the copy. What
  // stood in `to` is lost. DatabaseError 3024 and 3343 as of OpenDatabaseFile, 3027 when `to`
  // cannot be written.
  OnlineCopy(const std::filesystem::path& from, const std::filesystem::path& to);
  // A copy that is not whole and sound is deleted.
  ~OnlineCopy();
  OnlineCopy(const OnlineCopy&) = delete;
  OnlineCopy& operator=(const OnlineCopy&) = delete;

  // Copies some pages more; true while there are further ones. DatabaseError when the disk is full
  // or a file cannot be read.
  bool Step(int pages);
  // How much of the file has been copied, 0 to 1.
  double PartCopied() const;
  // Reads the whole copy, tables against indexes, and makes it safe on disk. `goOn` is asked now
  // and then; false when it gave false, and the copy is then as good as none. DatabaseError 3343
  // when the copy, and so what it was made of, is damaged.
  bool Verify(const std::function<bool()>& goOn);
  // The same on a thread of its own, while the caller's waits and asks `goOn` every few
  // milliseconds: the check of an index is one step of SQLite's, of seconds where a log is long.
  // What `goOn` throws ends the check and is thrown.
  bool VerifyBeside(const std::function<bool()>& goOn);

 private:
  struct Files;
  std::unique_ptr<Files> files_;
};

}  // namespace brenvo::file
