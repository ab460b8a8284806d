// A window with a field of every kind, which writes down the events that they run.
#pragma once

#include <string>
#include <vector>

#include "base/text.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// Two rows of two texts, which can be changed.
class TwoRows : public GridRows {
 public:
  std::int64_t RowCount() override { return static_cast<std::int64_t>(rows.size()); }
  std::string CellText(std::int64_t row, std::size_t field) override { return At(row)[field]; }
  void SetCellText(std::int64_t row, std::size_t field, std::string_view text) override {
    At(row)[field] = text;
  }
  void AddRow(std::size_t field, std::string_view text) override {
    rows.push_back({"", ""});
    rows.back()[field] = text;
  }
  void DeleteRow(std::int64_t row) override { rows.erase(rows.begin() + row); }
  std::vector<std::string>& At(std::int64_t row) { return rows[static_cast<std::size_t>(row)]; }

  std::vector<std::vector<std::string>> rows{{"a", "b"}, {"c\td", ""}};
};

class EveryField : public Window {
 public:
  explicit EveryField(WindowHost& host)
      : Window(host, "W", "Every field", Twips(3000), Twips(1500)) {
    Band.SetItems({" 20 m", "  2 m", " 70cm"});
    Mode.SetItems({"", "CW", "SSB"});
    Free.SetItems({"one", "two"});
    Many.SetItems({"a", "b", "c"});
    Entries.Add("Tutte", true);
    Entries.Add(" 20 m");
    Entries.OnPick = [this](int entry) {
      Note("Entries pick " + std::to_string(entry));
      Entries.SetChecked(entry, !Entries.Entries()[static_cast<std::size_t>(entry)].checked);
    };
    cmToggle.Toggle = true;
    cmOff.SetEnabled(false);
    First.JoinWith(Second);
    Cells.SetRows(2);
    Cells.SetColumns(2);
    Cells.SetCell(0, 0, "Call");
    Cells.SetCell(1, 1, "a\tb");
    Cells.OnHeading = [this](int column) { Note("Cells heading " + std::to_string(column)); };
    Rows.SetSource(&source);
    Rows.SetColumnsOf({{"First", 0, kOwnSize, {}}, {"Second", 1, kOwnSize, {}}});
    Rows.Editable = true;
    for (Field* field : Fields()) Watch(*field);
    DefaultCommand = &cmOk;
    CancelCommand = &cmCancel;
  }

  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }
  void Note(std::string event) { events.push_back(std::move(event)); }

  std::vector<std::string> events;
  TwoRows source;
  TextField Call{*this, "Call"};
  MaskedField Time{*this, "Time", "##:##"};
  ListField Band{*this, "Band", ListStyle::kDropDown};
  ListField Mode{*this, "Mode", ListStyle::kOpen};
  ListField Free{*this, "Free", ListStyle::kCombo};
  ListField Many{*this, "Many", ListStyle::kMulti};
  CheckBox Check{*this, "Check"};
  CheckBox Three{*this, "Three", {}, true};
  OptionButton First{*this, "First"};
  OptionButton Second{*this, "Second"};
  OptionGroup Group{*this, "Group", {"a", "b"}};
  Slider Tune{*this, "Tune", 0, 100, 50};
  Gauge Meter{*this, "Meter", 20, 175};
  Label Query{*this, "Query"};
  RichText Received{*this, "Received"};
  StatusBar Bar{*this, "Bar", 2};
  CellGrid Cells{*this, "Cells"};
  DataGrid Rows{*this, "Rows"};
  EntryArray Entries{*this, "Entries"};
  Command cmOk{*this, "cmOk", "&Ok"};
  Command cmCancel{*this, "cmCancel", "Cancel"};
  Command cmToggle{*this, "cmToggle", "Toggle"};
  Command cmOff{*this, "cmOff", "Off"};

 private:
  void Watch(Field& field) {
    const auto noting = [this, &field](const char* event) {
      return [this, &field, event] { Note(field.Name() + ' ' + event); };
    };
    field.OnFocus = noting("focus");
    field.OnChange = noting("change");
    field.OnClick = noting("click");
    field.OnDoubleClick = noting("double");
  }
};

}  // namespace brenvo
