// A whole station on a recorded machine, for targets that open windows. It must neither ask nor
// end: what does ends the target.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "recorder/recording_platform.h"
#include "station/station.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "tools/mkdatabase/database_maker.h"

namespace brenvo::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

class FuzzStation {
 public:
  FuzzStation() {
    mkdatabase::MakeDatabase(SourceDir() / "data/schema.sql", SourceDir() / "data",
                             Directory.Path() / "Brenvo.mdb");
    for (const char* file : {"tnc.mnu", "wwconv.mnu"}) {
      std::filesystem::copy_file(SourceDir() / "data" / file, Directory.Path() / file);
    }
    Frame = station::StartStation(session);
    Require(Frame != nullptr);
  }

  forms::Window* Open(std::string_view name) {
    Event([&] {
      if (forms::Window* window = session.Windows.LoadSingle(name)) session.Windows.Show(*window);
    });
    return session.Windows.Find(name);
  }
  // Every window but the main frame.
  void CloseAll() {
    for (;;) {
      forms::Window* last = nullptr;
      for (forms::Window* each : session.Windows.Loaded()) {
        if (each != Frame) last = each;
      }
      if (last == nullptr) return;
      Event([&] { Require(last->Close()); });
    }
  }
  template <class Work>
  void Event(Work&& work) {
    session.Windows.RunEvent(work);
  }

  ScratchDirectory Directory;
  recorder::RecordingPlatform Machine{[](const std::string&) {}};
  core::Session session{Machine, Directory.Path()};
  frame::MainFrame* Frame = nullptr;
};

}  // namespace brenvo::fuzz
