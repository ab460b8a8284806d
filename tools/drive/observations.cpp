#include "drive/observations.h"

#include <fmt/format.h>

#include "base/text.h"
#include "forms/field_visit.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

// Every kind of field shows itself here.
using namespace forms;

const char* OnOff(bool on) { return on ? "on" : "off"; }

std::string Shown(CheckState state) {
  return state == CheckState::kGrey ? "grey" : OnOff(state == CheckState::kOn);
}

std::string Shown(Field& field) {
  return VisitField(
      field,
      [](OneOf<TextField, MaskedField, DatePicker, ListField, RichText> auto& text) {
        return recorder::Quoted(text.Text());
      },
      [](CheckBox& box) { return Shown(box.State()); },
      [](OptionButton& option) { return std::string(OnOff(option.IsOn())); },
      [](OneOf<OptionGroup, TabStrip> auto& group) { return std::to_string(group.Index()); },
      [](OneOf<Slider, Gauge> auto& scale) { return std::to_string(scale.Value()); },
      [](Command& command) {
        return command.Toggle ? std::string(OnOff(command.Down()))
                              : recorder::Quoted(command.Caption());
      },
      [](OneOf<DataGrid, EntryArray, Grid, Label, Menu, Panel, PictureBox, StatusBar, ToolBar> auto&
             other) { return recorder::Quoted(other.Caption()); });
}

[[noreturn]] void Refuse(std::string_view name, const char* why) {
  throw recorder::Refused{std::string(name) + ' ' + why};
}

void PrintEntry(const recorder::LineSink& out, bool marked, const std::string& text) {
  out((marked ? "*" : "") + recorder::Quoted(text));
}

}  // namespace

void PrintField(const recorder::LineSink& out, std::string_view name, Field& field) {
  out(fmt::format("get {} {}", name, Shown(field)));
}

bool PrintProperty(const recorder::LineSink& out, std::string_view name, const Window& window,
                   std::string_view property) {
  const std::string wanted = base::Lower(property);
  std::string value;
  if (wanted == "caption") {
    value = recorder::Quoted(window.Caption());
  } else if (wanted == "tag") {
    value = recorder::Quoted(window.Tag);
  } else if (wanted == "left") {
    value = std::to_string(window.GetBounds().left.Value());
  } else if (wanted == "top") {
    value = std::to_string(window.GetBounds().top.Value());
  } else if (wanted == "width") {
    value = std::to_string(window.GetBounds().width.Value());
  } else if (wanted == "height") {
    value = std::to_string(window.GetBounds().height.Value());
  } else {
    return false;
  }
  out(fmt::format("get {} {}", name, value));
  return true;
}

void PrintEnabled(const recorder::LineSink& out, std::string_view name, const Field& field) {
  out(fmt::format("enabled {} {}", name, field.Enabled() ? "yes" : "no"));
}

void PrintGrid(const recorder::LineSink& out, std::string_view name, Field& field) {
  auto* grid = FieldAs<Grid>(field);
  if (grid == nullptr) Refuse(name, "is no grid");
  const std::int64_t rows = grid->Rows();
  const int columns = grid->Columns();
  out(fmt::format("grid {} {} {}", name, rows, columns));
  for (std::int64_t row = 0; row < rows; ++row) {
    const bool marked = row > 0 && grid->Arranger() != nullptr && grid->Arranger()->IsMarked(row);
    std::string line = marked ? "*" : "";
    for (int column = 0; column < columns; ++column) {
      if (column > 0) line += '\t';
      line += recorder::Escaped(grid->Cell(row, column));
    }
    out(line);
  }
}

void PrintList(const recorder::LineSink& out, std::string_view name, Field& field) {
  const auto print = [&](const auto& entries, const auto& marked, const auto& text) {
    out(fmt::format("list {} {}", name, entries.size()));
    for (std::size_t i = 0; i < entries.size(); ++i) {
      PrintEntry(out, marked(static_cast<int>(i)), text(entries[i]));
    }
  };
  const auto itself = [](const std::string& text) { return text; };
  VisitField(
      field,
      [&](ListField& list) {
        const bool several = list.Style() == ListStyle::kMulti;
        print(
            list.Items(), [&](int i) { return several ? list.Selected(i) : list.ListIndex() == i; },
            itself);
      },
      [&](EntryArray& entries) {
        print(
            entries.Entries(),
            [&](int i) { return entries.Entries()[static_cast<std::size_t>(i)].checked; },
            [](const EntryArray::Entry& entry) { return entry.caption; });
      },
      [&](OneOf<OptionGroup, TabStrip> auto& group) {
        print(
            group.Captions(), [&](int i) { return group.Index() == i; }, itself);
      },
      [&](OneOf<CheckBox, Command, DataGrid, DatePicker, Gauge, Grid, Label, MaskedField, Menu,
                OptionButton, Panel, PictureBox, RichText, Slider, StatusBar, TextField,
                ToolBar> auto&) { Refuse(name, "is no list"); });
}

void PrintRuns(const recorder::LineSink& out, std::string_view name, Field& field) {
  auto* rich = FieldAs<RichText>(field);
  if (rich == nullptr) Refuse(name, "is no text area");
  out(fmt::format("text {}", name));
  for (const RichText::Run& run : rich->Runs()) {
    out(fmt::format("#{:02x}{:02x}{:02x} {}", run.colour.red, run.colour.green, run.colour.blue,
                    recorder::Quoted(run.text)));
  }
}

void PrintStatus(const recorder::LineSink& out, std::string_view name, const Window& window) {
  for (Field* field : window.Fields()) {
    const auto* bar = FieldAs<StatusBar>(*field);
    if (bar == nullptr) continue;
    std::string line = fmt::format("status {}", name);
    for (int panel = 1; panel <= bar->Panels(); ++panel)
      line += ' ' + recorder::Quoted(bar->Panel(panel));
    out(line);
    return;
  }
  Refuse(name, "has no status bar");
}

void PrintMarks(const recorder::LineSink& out, std::string_view name, const Window& window) {
  constexpr std::string_view kWords[] = {"plain", "new", "worked", "confirmed"};
  const StatusBar* const bar = window.Status();
  if (bar == nullptr) Refuse(name, "has no status bar");
  for (int panel = 1; panel <= bar->Panels(); ++panel) {
    const forms::PanelMark& mark = bar->Mark(panel);
    if (mark.weight == forms::Weight::kPlain) continue;
    out(fmt::format("marks {} {} {}{}{}", name, panel,
                    kWords[static_cast<std::size_t>(mark.weight)], mark.pale ? " pale " : "",
                    mark.pale ? recorder::Quoted(mark.tip) : ""));
  }
}

void PrintRows(const recorder::LineSink& out, engine::Recordset& rows) {
  std::int64_t count = 0;
  for (; !rows.EOF_(); rows.MoveNext(), ++count) {
    std::string line = "row";
    for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
      const engine::Value value = rows.Field(column);
      line += '\t' + (value.IsNull() ? "NULL" : recorder::Escaped(value.Text()));
    }
    out(line);
  }
  out(fmt::format("rows {}", count));
}

}  // namespace brenvo::drive
