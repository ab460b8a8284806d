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
class QuietPrinter : public recorder::RecordingPrinter {
 public:
  using recorder::RecordingPrinter::RecordingPrinter;
  void Text(base::Mm, base::Mm, std::string_view) override {}
  void TextRight(base::Mm, base::Mm, std::string_view) override {}
  void Line(base::Mm, base::Mm, base::Mm, base::Mm) override {}
  void Box(base::Mm, base::Mm, base::Mm, base::Mm, bool) override {}
  void NewPage() override { ++Pages; }
  void EndDocument() override {}
  int Pages = 1;
};

class QuietPlatform : public recorder::RecordingPlatform {
 public:
  QuietPlatform() : recorder::RecordingPlatform([](const std::string&) {}) {}
  QuietPrinter& GetPrinter() override { return printer_; }
  recorder::RecordingPrinter& Reports() override { return printer_; }

 private:
  recorder::FileNames names_;
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
    forms::Window* window = session.Windows.LoadNew(name);
    session.Windows.Show(*window);
    return static_cast<Form&>(*window);
  }
  void Close(forms::Window& window) { session.Windows.Unload(window); }

  std::int64_t contacts;
  BenchDirectory directory;
  QuietPlatform machine;
  core::Session session{machine, directory.Path()};
  frame::MainFrame* frame = nullptr;
  sqlite3* file = nullptr;
};

}  // namespace brenvo::bench
