// A station with a full log, on a machine that shows and prints nothing.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>

#include "core/session.h"
#include "frame/main_frame.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::bench {

// A printer whose pages cost nothing.
class QuietPrinter : public RecordingPrinter {
 public:
  using RecordingPrinter::RecordingPrinter;
  void Text(Mm, Mm, std::string_view) override {}
  void TextRight(Mm, Mm, std::string_view) override {}
  void Line(Mm, Mm, Mm, Mm) override {}
  void Box(Mm, Mm, Mm, Mm, bool) override {}
  void NewPage() override { ++Pages; }
  void EndDocument() override {}
  int Pages = 1;
};

class QuietPlatform : public RecordingPlatform {
 public:
  QuietPlatform() : RecordingPlatform([](const std::string&) {}) {}
  QuietPrinter& GetPrinter() override { return printer_; }
  RecordingPrinter& Reports() override { return printer_; }

 private:
  FileNames names_;
  QuietPrinter printer_{[](const std::string&) {}, names_};
};

// An application directory of its own as it is delivered, with a log of so many contacts. A log is
// made once and kept in the build folder.
class BenchDirectory {
 public:
  explicit BenchDirectory(std::int64_t contacts);
  const std::filesystem::path& Path() const { return directory_.Path(); }
  std::filesystem::path File() const { return Path() / "Brenvo.mdb"; }

 private:
  ScratchDirectory directory_;
};

// The whole station on such a directory, and its file once more for the hand, with a cache of the
// same size and the same safety.
class BenchStation {
 public:
  explicit BenchStation(std::int64_t contacts);
  ~BenchStation();

  template <class Form>
  Form& Open(const char* name) {
    Window* window = session.Windows.LoadNew(name);
    session.Windows.Show(*window);
    return static_cast<Form&>(*window);
  }
  void Close(Window& window) { session.Windows.Unload(window); }

  std::int64_t contacts;
  BenchDirectory directory;
  QuietPlatform machine;
  Session session{machine, directory.Path()};
  MainFrame* frame = nullptr;
  sqlite3* file = nullptr;
};

}  // namespace brenvo::bench
