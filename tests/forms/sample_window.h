// A window with a field of each common kind, on a host that shows nothing.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/rich_text.h"
#include "forms/text_field.h"
#include "forms/window.h"
#include "forms/window_host.h"

namespace brenvo::forms {

// A host that shows nothing and writes down what it is asked.
class SilentHost : public WindowHost {
 public:
  std::vector<std::string> told;
  std::function<void(Window&)> duringModal;
  void Show(Window& window) override { told.push_back("show " + window.Name()); }
  void ShowModal(Window& window) override {
    told.push_back("modal " + window.Name());
    if (duringModal) duringModal(window);
  }
  void Hide(Window& window) override { told.push_back("hide " + window.Name()); }
  void Forget(Window& window) override { told.push_back("forget " + window.Name()); }
  void MoveFocus(Field& field) override { told.push_back("focus " + field.Name()); }
  void SetBusy(bool) override {}
  void ProcessEvents() override {}
  base::Twips ScreenWidth() override { return base::Twips(19200); }
  base::Twips ScreenHeight() override { return base::Twips(12000); }
  void ReportFailure(std::string_view text) override {
    told.push_back("failure " + std::string(text));
  }
  void EndProgram() override { throw ProgramEnded{}; }
};

class SampleWindow : public Window {
 public:
  explicit SampleWindow(WindowHost& host)
      : Window(host, "Sample", "Sample", base::Twips(3000), base::Twips(2000)) {}
  TextField Text{*this, "Text"};
  MaskedField Time{*this, "Time", "##:##"};
  ListField Pick{*this, "Pick", ListStyle::kDropDown};
  ListField Combo{*this, "Combo", ListStyle::kCombo};
  ListField Multi{*this, "Multi", ListStyle::kMulti};
  CheckBox Two{*this, "Two"};
  CheckBox Three{*this, "Three", {}, true};
  OptionButton Left{*this, "Left"};
  OptionButton Right{*this, "Right"};
  Slider Slide{*this, "Slide", 10, 20, 15};
  CellGrid Cells{*this, "Cells"};
  RichText Rich{*this, "Rich"};
  Command Key{*this, "cmKey", "&Key"};
  std::vector<std::string> life;
  bool refuses = false;
  bool failsToLoad = false;
  void Load() override {
    life.push_back("load");
    if (failsToLoad) throw std::runtime_error("no");
  }
  void Activate() override { life.push_back("activate"); }
  void Resize() override { life.push_back("resize"); }
  bool QueryUnload() override { return !refuses; }
  void Unload() override { life.push_back("unload"); }
};

struct Fields : testing::Test {
  SilentHost host;
  SampleWindow window{host};
  int changes = 0;
  void Count(Field& field) {
    field.OnChange = [this] { ++changes; };
  }
};

}  // namespace brenvo::forms
