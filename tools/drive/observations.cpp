#include "tools/drive/observations.h"

#include <fmt/format.h>

#include "base/text.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo {
namespace {

const char* OnOff(bool on) { return on ? "on" : "off"; }

std::string Shown(CheckState state) {
  return state == CheckState::kGrey ? "grey" : OnOff(state == CheckState::kOn);
}

std::string Shown(Field& field) {
  if (auto* text = dynamic_cast<TextField*>(&field)) return Quoted(text->Text());
  if (auto* rich = dynamic_cast<RichText*>(&field)) return Quoted(rich->Text());
  if (auto* box = dynamic_cast<CheckBox*>(&field)) return Shown(box->State());
  if (auto* option = dynamic_cast<OptionButton*>(&field)) return OnOff(option->IsOn());
  if (auto* group = dynamic_cast<OptionGroup*>(&field)) return std::to_string(group->Index());
  if (auto* slider = dynamic_cast<Slider*>(&field)) return std::to_string(slider->Value());
  if (auto* gauge = dynamic_cast<Gauge*>(&field)) return std::to_string(gauge->Value());
  if (auto* command = dynamic_cast<Command*>(&field); command != nullptr && command->Toggle) {
    return OnOff(command->Down());
  }
  return Quoted(field.Caption());
}

[[noreturn]] void Refuse(std::string_view name, const char* why) {
  throw Refused{std::string(name) + ' ' + why};
}

void PrintEntry(const LineSink& out, bool marked, const std::string& text) {
  out((marked ? "*" : "") + Quoted(text));
}

}  // namespace

void PrintField(const LineSink& out, std::string_view name, Field& field) {
  out(fmt::format("get {} {}", name, Shown(field)));
}

bool PrintProperty(const LineSink& out, std::string_view name, const Window& window,
                   std::string_view property) {
  const std::string wanted = Lower(property);
  std::string value;
  if (wanted == "caption") {
    value = Quoted(window.Caption());
  } else if (wanted == "tag") {
    value = Quoted(window.Tag);
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

void PrintEnabled(const LineSink& out, std::string_view name, const Field& field) {
  out(fmt::format("enabled {} {}", name, field.Enabled() ? "yes" : "no"));
}

void PrintGrid(const LineSink& out, std::string_view name, Field& field) {
  auto* grid = dynamic_cast<Grid*>(&field);
  if (grid == nullptr) Refuse(name, "is no grid");
  const std::int64_t rows = grid->Rows();
  const int columns = grid->Columns();
  out(fmt::format("grid {} {} {}", name, rows, columns));
  for (std::int64_t row = 0; row < rows; ++row) {
    std::string line;
    for (int column = 0; column < columns; ++column) {
      if (column > 0) line += '\t';
      line += Escaped(grid->Cell(row, column));
    }
    out(line);
  }
}

void PrintList(const LineSink& out, std::string_view name, Field& field) {
  if (auto* list = dynamic_cast<ListField*>(&field)) {
    const auto& items = list->Items();
    out(fmt::format("list {} {}", name, items.size()));
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
      const bool marked =
          list->Style() == ListStyle::kMulti ? list->Selected(i) : list->ListIndex() == i;
      PrintEntry(out, marked, items[static_cast<std::size_t>(i)]);
    }
  } else if (auto* entries = dynamic_cast<EntryArray*>(&field)) {
    out(fmt::format("list {} {}", name, entries->Entries().size()));
    for (const auto& entry : entries->Entries()) PrintEntry(out, entry.checked, entry.caption);
  } else if (auto* group = dynamic_cast<OptionGroup*>(&field)) {
    const auto& captions = group->Captions();
    out(fmt::format("list {} {}", name, captions.size()));
    for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
      PrintEntry(out, group->Index() == i, captions[static_cast<std::size_t>(i)]);
    }
  } else {
    Refuse(name, "is no list");
  }
}

void PrintRuns(const LineSink& out, std::string_view name, Field& field) {
  auto* rich = dynamic_cast<RichText*>(&field);
  if (rich == nullptr) Refuse(name, "is no text area");
  out(fmt::format("text {}", name));
  for (const RichText::Run& run : rich->Runs()) {
    out(fmt::format("#{:02x}{:02x}{:02x} {}", run.colour.red, run.colour.green, run.colour.blue,
                    Quoted(run.text)));
  }
}

void PrintStatus(const LineSink& out, std::string_view name, const Window& window) {
  for (Field* field : window.Fields()) {
    const auto* bar = dynamic_cast<StatusBar*>(field);
    if (bar == nullptr) continue;
    std::string line = fmt::format("status {}", name);
    for (int panel = 1; panel <= bar->Panels(); ++panel) line += ' ' + Quoted(bar->Panel(panel));
    out(line);
    return;
  }
  Refuse(name, "has no status bar");
}

void PrintRows(const LineSink& out, Recordset& rows) {
  std::int64_t count = 0;
  for (; !rows.EOF_(); rows.MoveNext(), ++count) {
    std::string line = "row";
    for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
      const Value value = rows.Field(column);
      line += '\t' + (value.IsNull() ? "NULL" : Escaped(value.Text()));
    }
    out(line);
  }
  out(fmt::format("rows {}", count));
}

}  // namespace brenvo
