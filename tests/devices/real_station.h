// A whole station on real lines.
#pragma once

#include <gtest/gtest.h>

#include <fstream>

#include "core/shared_windows.h"
#include "links/ft736.h"
#include "links/tnc.h"
#include "links/tnc_telnet.h"
#include "links/wwconv.h"
#include "tests/devices/real_lines.h"
#include "tests/support/places.h"

namespace brenvo::ui {

class RealStation : public testing::Test {
 protected:
  RealStation() {
    std::filesystem::copy_file(BuildDir() / "delivered/Brenvo.mdb",
                               directory.Path() / "Brenvo.mdb");
    for (const char* file : {"tnc.mnu", "wwconv.mnu"}) {
      std::filesystem::copy_file(SourceDir() / "data" / file, directory.Path() / file);
    }
    std::filesystem::copy_file(SourceDir() / "data/rules/ModiRtx.csv",
                               directory.Path() / "ModiRtx.csv");
    machine.SetApplicationDirectory(directory.Path());
    machine.Gate.Attach(&session.Windows);
    frame = station::StartStation(session);
  }
  ~RealStation() override {
    Event([&] { station::StopStation(session); });
    machine.Gate.Attach(nullptr);
  }

  void Profile(const std::string& assignments) {
    session.Db.Execute("UPDATE [User] SET " + assignments);
    session.Tables.TbUser->MoveFirst();
  }
  template <class Form>
  Form& Open(const char* name) {
    Event([&] { session.Windows.Show(*session.Windows.LoadSingle(name)); });
    return static_cast<Form&>(*session.Windows.Find(name));
  }
  void Event(const std::function<void()>& event) { session.Windows.RunEvent(event); }
  void TypeLine(forms::TextField& field, std::string_view text) {
    Event([&] {
      field.SetText(text);
      field.TypeKey(forms::kEnter);
    });
  }
  bool Shows(const forms::RichText& area, const std::string& text) {
    return Until([&] { return area.Text() == text; });
  }

  ScratchDirectory directory;
  RealLines machine;
  core::Session session{machine, directory.Path()};
  frame::MainFrame* frame = nullptr;
};

}  // namespace brenvo::ui
