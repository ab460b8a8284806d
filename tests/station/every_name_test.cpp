// Every command and every field event of every window, held against the scenarios: a name that none
// of them touches fails. The whole table is written to names.tsv in the build folder.
#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "forms/field_visit.h"
#include "tests/station/all_windows.h"
#include "tests/support/places.h"

namespace brenvo::station {
namespace {

// Every kind of field is looked at here.
using namespace forms;

using Words = std::set<std::string>;

// What a scenario says: "type LogForm.CallQso", "hover LogForm.cmHelp", "menu cmLog".
class Scenarios {
 public:
  Scenarios() {
    for (const auto& entry : std::filesystem::directory_iterator(SourceDir() / "tests/scenarios")) {
      if (entry.path().extension() == ".drive") Read(entry.path());
    }
  }

  // The scenario that does any of these to the field; empty when there is none.
  std::string Touching(const Words& verbs, const std::string& name) const {
    for (const std::string& verb : verbs) {
      if (const auto at = said_.find(base::Upper(verb + ' ' + name)); at != said_.end()) {
        return at->second;
      }
    }
    return "";
  }

 private:
  void Read(const std::filesystem::path& file) {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
      std::istringstream words(line);
      std::string verb, name, rest;
      words >> verb >> name;
      std::getline(words, rest);
      // One instance of a window stands for all of them.
      if (const auto number = name.find('#'); number != std::string::npos) {
        const auto dot = name.find('.', number);
        name.erase(number, dot == std::string::npos ? dot : dot - number);
      }
      if (verb == "key") verb += rest;
      said_.emplace(base::Upper(verb + ' ' + name), file.stem().string());
    }
  }

  std::map<std::string, std::string> said_;
};

// An event that something hangs on, and the words of the driver that bring it about.
struct FieldEvent {
  std::string name;
  Words verbs;
};

Words WaysOfChanging(Field& field) {
  Words verbs = {"set", "type", "key backspace", "drop"};
  VisitField(
      field,
      [&](ListField&) {
        verbs.insert({"click", "tick", "dblclick"});
      },
      [&](OneOf<CheckBox, OptionButton, OptionGroup, TabStrip> auto&) {
        verbs.insert({"tick", "click", "press"});
      },
      [](OneOf<Command, DataGrid, DatePicker, EntryArray, Gauge, Grid, Label, MaskedField, Menu,
               Panel, PictureBox, RichText, Slider, StatusBar, TextField, ToolBar> auto&) {});
  return verbs;
}

std::vector<FieldEvent> EventsOf(Field& field) {
  std::vector<FieldEvent> events;
  const auto add = [&](bool hung, const char* name, Words verbs) {
    if (hung) events.push_back({name, std::move(verbs)});
  };
  add(field.OnFocus != nullptr, "focus", {"focus", "type"});
  add(field.OnLeave != nullptr, "leave", {"leave"});
  add(field.HasHint(), "hint", {"hover"});
  add(field.OnChange != nullptr, "change", WaysOfChanging(field));
  add(field.OnDoubleClick != nullptr, "double click", {"dblclick"});
  add(field.OnDrop != nullptr, "drop", {"drop"});
  if (const auto* text = FieldAs<TextField>(field)) {
    add(text->OnStep != nullptr, "step", {"wheel"});
  }
  const auto keys = [&](const TextField& text) {
    add(text.Filter != nullptr, "key", {"type", "key enter", "key backspace"});
    add(text.OnEnter != nullptr, "enter", {"key enter"});
  };
  const auto click = [&](Words verbs) { add(field.OnClick != nullptr, "click", std::move(verbs)); };
  const Words clicks = {"click", "tick", "press", "dblclick"};
  const auto cells = [&](const Grid& grid) {
    click(clicks);
    add(grid.OnHeading != nullptr, "heading", {"column", "sort"});
    add(grid.OnKey != nullptr, "key", {"key", "key enter", "key backspace"});
    add(grid.OnContextMenu != nullptr, "right button", {"key menu"});
  };
  VisitField(
      field,
      [&](ListField& list) {
        keys(list);
        Words verbs = clicks;
        verbs.insert("set");
        click(verbs);
        add(list.OnContextMenu != nullptr, "right button", {"key menu"});
      },
      [&](OneOf<TextField, MaskedField, DatePicker> auto& text) {
        keys(text);
        click(clicks);
      },
      [&](Command&) {
        add(true, "press", {"press", "tick", "click"});
      },
      [&](EntryArray& entries) {
        click(clicks);
        add(entries.OnPick != nullptr, "pick", {"click", "tick"});
      },
      [&](Grid& grid) { cells(grid); },
      [&](DataGrid& grid) {
        cells(grid);
        add(grid.OnBeforeEdit != nullptr || grid.OnAfterEdit != nullptr, "edit", {"edit"});
        add(grid.OnBeforeDelete != nullptr, "delete", {"remove"});
        for (const char* verb : {"sort", "filter", "mark", "move", "width"}) {
          add(grid.Arranger() != nullptr, verb, {verb});
        }
      },
      [&](OneOf<CheckBox, Gauge, Label, Menu, OptionButton, OptionGroup, Panel, PictureBox,
                RichText, Slider, StatusBar, TabStrip, ToolBar> auto&) { click(clicks); });
  return events;
}

class EveryName : public AllWindowsTest {
 protected:
  // Each event of each window once, in the order of declaration.
  void ForEachEvent(
      const std::function<void(const Window&, const Field&, const FieldEvent&)>& visit) {
    for (const std::string& name : session.Windows.KnownNames()) {
      session.Windows.RunEvent([&] {
        Window* const window = session.Windows.LoadNew(name);
        if (window == nullptr) {
          ADD_FAILURE() << name << " does not load";
          return;
        }
        for (Field* field : window->Fields()) {
          for (const FieldEvent& event : EventsOf(*field)) visit(*window, *field, event);
        }
        session.Windows.Unload(*window);
      });
    }
    for (const std::string& line : Lines()) {
      EXPECT_FALSE(line.starts_with("error ")) << line;
    }
  }

  const Scenarios scenarios;
};

TEST_F(EveryName, OfTheMainMenuIsChosenInAScenario) {
  for (Field* field : frame->Fields()) {
    if (FieldAs<Command>(*field) == nullptr) continue;
    EXPECT_NE(scenarios.Touching({"menu"}, field->Name()), "") << field->Name();
  }
}

TEST_F(EveryName, OfACommandOrFieldEventIsReachedByAScenario) {
  std::ofstream table(BuildDir() / "names.tsv");
  std::string missing;
  ForEachEvent([&](const Window& window, const Field& field, const FieldEvent& event) {
    const std::string name = window.Name() + '.' + field.Name();
    const std::string where = scenarios.Touching(event.verbs, name);
    table << name << '\t' << event.name << '\t' << where << '\n';
    if (where.empty()) missing += "  " + name + ": " + event.name + '\n';
  });
  EXPECT_TRUE(missing.empty()) << "No scenario reaches\n" << missing;
}

}  // namespace
}  // namespace brenvo::station
