// SQLite's files, watched: what is written, synced and deleted is noted in order, so that a test
// can work out what a power cut could have left of it, and can make any of it fail.
#pragma once

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace brenvo {

// Lives on the stack of one test; every database opened meanwhile is watched.
class RecordedFiles {
 public:
  enum class Kind { kWrite, kTruncate, kSync, kDelete, kMark };
  struct Operation {
    Kind kind;
    std::string file;
    std::int64_t offset = 0;  // of a write; the size of a truncation
    std::string bytes;
  };
  // The contents of a directory, by path.
  using Files = std::map<std::string, std::string>;

  RecordedFiles() {
    if (active_ != nullptr) throw std::logic_error("one at a time");
    active_ = this;
    below_ = sqlite3_vfs_find(nullptr);
    vfs_ = *below_;
    vfs_.szOsFile = static_cast<int>(sizeof(Handle)) + below_->szOsFile;
    vfs_.zName = "recorded";
    vfs_.pNext = nullptr;
    vfs_.xOpen = Open;
    vfs_.xDelete = Delete;
    sqlite3_vfs_register(&vfs_, 1);
  }
  ~RecordedFiles() {
    sqlite3_vfs_register(below_, 1);
    sqlite3_vfs_unregister(&vfs_);
    active_ = nullptr;
  }
  RecordedFiles(const RecordedFiles&) = delete;
  RecordedFiles& operator=(const RecordedFiles&) = delete;

  const std::vector<Operation>& Operations() const { return operations_; }
  // A remark of the test's own between the operations, such as "this contact is stored".
  void Mark(std::string text) { operations_.push_back({Kind::kMark, std::move(text), 0, {}}); }
  // The n-th write, truncation or sync from now on (from 0), and all that follow, fail with this
  // result of SQLite's.
  void FailFrom(std::int64_t n, int code) {
    failFrom_ = n;
    failCode_ = code;
  }
  void StopFailing() {
    failFrom_ = -1;
    failed_ = false;
  }
  bool HasFailed() const { return failed_; }

  static Files FilesIn(const std::filesystem::path& directory) {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
      std::ifstream file(entry.path(), std::ios::binary);
      files[entry.path().string()].assign(std::istreambuf_iterator<char>(file), {});
    }
    return files;
  }

  // What the disk may hold when the power goes after `count` operations on what `before` held.
  // What was synced is there; of what was not, each half kilobyte is there or not as `random` has
  // it: all of it with `share` 1, nothing with 0.
  Files AfterPowerCut(const Files& before, std::size_t count, double share,
                      std::mt19937& random) const {
    std::map<std::string, State> states;
    for (const auto& [name, bytes] : before) states[name] = {bytes, true, {}, false};
    for (std::size_t i = 0; i < count; ++i) {
      const Operation& operation = operations_[i];
      if (operation.kind == Kind::kMark) continue;
      State& state = states[operation.file];
      if (operation.kind == Kind::kSync) {
        for (const Operation* each : state.pending) Apply(state.durable, *each, 0, SIZE_MAX);
        state.pending.clear();
        state.exists = true;
        state.deleted = false;
      } else if (operation.kind == Kind::kDelete) {
        if (operation.offset != 0) {
          state = {};  // the directory was synced with it
        } else {
          state.deleted = true;
        }
      } else {
        if (state.deleted) state = {};
        state.pending.push_back(&operation);
      }
    }
    std::bernoulli_distribution lands(share);
    Files left;
    for (auto& [name, state] : states) {
      if (state.deleted && lands(random)) continue;
      bool exists = state.exists;
      std::string content = state.durable;
      std::vector<const Operation*> pending = state.pending;
      // Nothing tells the disk in which order to take them.
      if (share > 0 && share < 1) std::shuffle(pending.begin(), pending.end(), random);
      for (const Operation* each : pending) {
        if (each->kind == Kind::kTruncate) {
          if (lands(random)) Apply(content, *each, 0, 0);
          continue;
        }
        for (std::size_t at = 0; at < each->bytes.size(); at += kSector) {
          if (!lands(random)) continue;
          Apply(content, *each, at, kSector);
          exists = true;
        }
      }
      if (exists) left[name] = std::move(content);
    }
    return left;
  }

  // Makes a directory hold these files and nothing else; paths are moved into it.
  static void Write(const Files& files, const std::filesystem::path& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
      std::filesystem::remove_all(entry.path());
    }
    for (const auto& [name, bytes] : files) {
      std::ofstream file(directory / std::filesystem::path(name).filename(), std::ios::binary);
      file << bytes;
    }
  }

 private:
  static constexpr std::size_t kSector = 512;

  struct State {
    std::string durable;
    bool exists = false;
    std::vector<const Operation*> pending;
    bool deleted = false;  // and the directory not synced since
  };

  // The file's own object stands first; SQLite hands the same memory to the one below, behind it.
  struct Handle {
    sqlite3_file base;
    std::string* name;
    sqlite3_file* Below() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  };
  static Handle& Of(sqlite3_file* file) { return *reinterpret_cast<Handle*>(file); }

  static void Apply(std::string& content, const Operation& operation, std::size_t from,
                    std::size_t most) {
    if (operation.kind == Kind::kTruncate) {
      content.resize(static_cast<std::size_t>(operation.offset));
      return;
    }
    const std::string part = operation.bytes.substr(from, most);
    const std::size_t at = static_cast<std::size_t>(operation.offset) + from;
    if (content.size() < at + part.size()) content.resize(at + part.size());
    content.replace(at, part.size(), part);
  }

  int Note(Operation operation) {
    if (failFrom_ == 0) {
      failed_ = true;
      return failCode_;
    }
    if (failFrom_ > 0) --failFrom_;
    operations_.push_back(std::move(operation));
    return SQLITE_OK;
  }

  static int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* out) {
    Handle& handle = Of(file);
    std::memset(file, 0, sizeof(Handle));
    sqlite3_vfs* below = active_->below_;
    const int code = below->xOpen(below, name, handle.Below(), flags, out);
    // Temporary files without a name do not outlive the process.
    if (code == SQLITE_OK) {
      handle.name = new std::string(name == nullptr ? "" : name);
      handle.base.pMethods = Methods();
    }
    return code;
  }
  static int Delete(sqlite3_vfs*, const char* name, int sync) {
    active_->operations_.push_back({Kind::kDelete, name, sync, {}});
    return active_->below_->xDelete(active_->below_, name, sync);
  }

  template <class Call>
  static int Noted(sqlite3_file* file, Operation operation, Call call) {
    if (!Of(file).name->empty() && active_ != nullptr) {
      operation.file = *Of(file).name;
      if (const int code = active_->Note(std::move(operation)); code != SQLITE_OK) return code;
    }
    return call(Of(file).Below());
  }

  static const sqlite3_io_methods* Methods() {
    static const sqlite3_io_methods kMethods = {
        3,
        [](sqlite3_file* f) {
          sqlite3_file* below = Of(f).Below();
          delete Of(f).name;
          return below->pMethods ? below->pMethods->xClose(below) : SQLITE_OK;
        },
        [](sqlite3_file* f, void* to, int size, sqlite3_int64 at) {
          return Of(f).Below()->pMethods->xRead(Of(f).Below(), to, size, at);
        },
        [](sqlite3_file* f, const void* from, int size, sqlite3_int64 at) {
          return Noted(
              f,
              {Kind::kWrite, "", at,
               std::string(static_cast<const char*>(from), static_cast<std::size_t>(size))},
              [&](sqlite3_file* b) { return b->pMethods->xWrite(b, from, size, at); });
        },
        [](sqlite3_file* f, sqlite3_int64 size) {
          return Noted(f, {Kind::kTruncate, "", size, {}},
                       [&](sqlite3_file* b) { return b->pMethods->xTruncate(b, size); });
        },
        [](sqlite3_file* f, int flags) {
          return Noted(f, {Kind::kSync, "", 0, {}},
                       [&](sqlite3_file* b) { return b->pMethods->xSync(b, flags); });
        },
        [](sqlite3_file* f, sqlite3_int64* size) {
          return Of(f).Below()->pMethods->xFileSize(Of(f).Below(), size);
        },
        [](sqlite3_file* f, int level) {
          return Of(f).Below()->pMethods->xLock(Of(f).Below(), level);
        },
        [](sqlite3_file* f, int level) {
          return Of(f).Below()->pMethods->xUnlock(Of(f).Below(), level);
        },
        [](sqlite3_file* f, int* out) {
          return Of(f).Below()->pMethods->xCheckReservedLock(Of(f).Below(), out);
        },
        [](sqlite3_file* f, int op, void* arg) {
          return Of(f).Below()->pMethods->xFileControl(Of(f).Below(), op, arg);
        },
        [](sqlite3_file* f) { return Of(f).Below()->pMethods->xSectorSize(Of(f).Below()); },
        // No promise of the device's is relied on.
        [](sqlite3_file*) { return 0; },
        [](sqlite3_file* f, int page, int size, int extend, void volatile** out) {
          return Of(f).Below()->pMethods->xShmMap(Of(f).Below(), page, size, extend, out);
        },
        [](sqlite3_file* f, int offset, int n, int flags) {
          return Of(f).Below()->pMethods->xShmLock(Of(f).Below(), offset, n, flags);
        },
        [](sqlite3_file* f) { Of(f).Below()->pMethods->xShmBarrier(Of(f).Below()); },
        [](sqlite3_file* f, int deleteFlag) {
          return Of(f).Below()->pMethods->xShmUnmap(Of(f).Below(), deleteFlag);
        },
        // Reading through memory would pass by the reads, which are not noted: refused.
        [](sqlite3_file*, sqlite3_int64, int, void** out) {
          *out = nullptr;
          return SQLITE_OK;
        },
        [](sqlite3_file*, sqlite3_int64, void*) { return SQLITE_OK; },
    };
    return &kMethods;
  }

  static inline RecordedFiles* active_ = nullptr;
  sqlite3_vfs* below_ = nullptr;
  sqlite3_vfs vfs_{};
  std::vector<Operation> operations_;
  std::int64_t failFrom_ = -1;
  int failCode_ = SQLITE_OK;
  bool failed_ = false;
};

}  // namespace brenvo
