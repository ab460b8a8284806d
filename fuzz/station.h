// A whole station on a recorded machine, for targets that open windows. It must neither ask nor
// end: what does ends the target.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "recorder/recording_platform.h"
#include "station/station.h"
#include "tests/support/scratch_directory.h"
#include "tools/mkdatabase/database_maker.h"
#include "tests/support/places.h"

namespace brenvo {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

class FuzzStation {
 public:
  FuzzStation() {
    MakeDatabase(SourceDir() / "data/schema.sql", SourceDir() / "data",
                 Directory.Path() / "Brenvo.mdb");
    for (const char* file : {"tnc.mnu", "wwconv.mnu"}) {
      std::filesystem::copy_file(SourceDir() / "data" / file,
                                 Directory.Path() / file);
    }
    Frame = StartStation(session);
    Require(Frame != nullptr);
  }

  Window* Open(std::string_view name) {
    Event([&] {
      if (Window* window = session.Windows.LoadSingle(name)) session.Windows.Show(*window);
    });
    return session.Windows.Find(name);
  }
  // Every window but the main frame.
  void CloseAll() {
    for (;;) {
      Window* last = nullptr;
      for (Window* each : session.Windows.Loaded()) {
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
  RecordingPlatform Machine{[](const std::string&) {}};
  Session session{Machine, Directory.Path()};
  MainFrame* Frame = nullptr;
};

}  // namespace brenvo
