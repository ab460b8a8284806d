// A station whose windows are stand-ins, for what the core does with whatever windows there are.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/window_place.h"
#include "tests/support/station.h"

namespace brenvo::core {

// A child that saves its place, and can refuse to close.
class Child : public forms::Window {
 public:
  Child(Session& session, std::string name)
      : forms::Window(session.Host(), name, name, base::Twips(3000), base::Twips(2000)),
        session_(session) {}
  void Load() override { RestoreWindow(session_, *this, Name()); }
  bool QueryUnload() override { return !Tag.starts_with("refuse"); }
  void Unload() override { SaveWindow(session_, *this, Name()); }

 private:
  Session& session_;
};

class CoreStation : public StationTest {
 protected:
  void KnowChild(const std::string& name) {
    session.Windows.Register(name, [this, name] { return std::make_unique<Child>(session, name); });
  }
  void Menu(std::string_view command) { Press(*frame, command); }
};

}  // namespace brenvo::core
