#include "digital/digitale.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::digital {
namespace {

constexpr double kHzPerKhz = 1000;

std::string TimeText(const TimeOfDay& time) {
  if (!time) return {};
  const std::uint32_t seconds = *time / 1000;
  return fmt::format("{:02}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string DelayText(const Decode& decode) {
  const double delay = DtOf(decode);
  if (!(delay > -1000 && delay < 1000)) return {};
  std::string text = fmt::format("{:.1f}", delay);
  return text == "-0.0" ? "0.0" : text;
}

std::string StateOf(const Program& program) {
  if (program.gone) return "non risponde";
  if (!program.status) return "";
  if (program.status->transmitting) return "trasmette";
  return program.status->decoding ? "decodifica" : "riceve";
}

// A text of the network on one line of a screen.
std::string OneLine(std::string_view text) {
  std::string line = base::ValidUtf8(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return line;
}

}  // namespace

void DecodeRows::SetNumbered(std::vector<std::int64_t> numbers, std::vector<Row> rows) {
  numbers_ = std::move(numbers);
  SetRows(std::move(rows));
}

void DecodeRows::PutNumbered(std::int64_t number, Row row) {
  numbers_.insert(numbers_.begin(), number);
  if (numbers_.size() > Programs::kMostDecodes) numbers_.resize(Programs::kMostDecodes);
  PutFirst(std::move(row), Programs::kMostDecodes);
}

std::int64_t DecodeRows::KeyAt(std::int64_t row) {
  return numbers_.at(static_cast<std::size_t>(core::MemoryRows::KeyAt(row)));
}

std::optional<std::int64_t> DecodeRows::RowOf(std::int64_t number) {
  const auto at = std::ranges::lower_bound(numbers_, number, std::greater<>());
  if (at == numbers_.end() || *at != number) return std::nullopt;
  return core::MemoryRows::RowOf(at - numbers_.begin());
}

Digitale::Digitale(core::Session& session, Programs& programs)
    : core::ArrangedWindow(session, "Digitale", "Programmi digitali", base::Twips(15600),
                           base::Twips(8400)),
      programs_(programs) {
  ShowCommands({&cmRispondi, &cmFerma, &cmRileggi, &cmPulisci, &cmRiprova});
  DefaultCommand = &cmRispondi;
  for (forms::CheckBox* each : {&SoloBisogni, &SoloCQ, &SoloMiei}) {
    each->OnChange = [this] { FillTable(); };
  }
  Decodifiche.RowColour = [this](std::int64_t row) {
    if (row > rows_.RowCount()) return base::kWhite;
    const HeardDecode* const heard = programs_.FindDecode(rows_.KeyAt(row - 1));
    return heard == nullptr || !heard->need ? base::kWhite : Programs::ColourOf(*heard->need);
  };
}

void Digitale::Load() {
  core::ArrangedWindow::Load();
  using enum core::ColumnKind;
  ArrangeTable(rows_, {{"Ora"},
                       {"dB", kNumber},
                       {"dT", kNumber},
                       {"Hz", kNumber},
                       {"Modo"},
                       {"Messaggio"},
                       {"Call"},
                       {"Bisogno"},
                       {"Country"},
                       {"Locator"},
                       {"Km", kNumber},
                       {"Banda", kText, false},
                       {"Programma", kText, false}});
  Programmi.SetSource(&programRows_);
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const char* heading : {"Programma", "kHz", "Modo", "Stato", "Chiama"}) {
    columns.push_back({heading, columns.size(), forms::kOwnSize, {}});
  }
  Programmi.SetColumnsOf(std::move(columns));
  changed_ = programs_.Changed.Subscribe([this] { ShowPrograms(); });
  decoded_ = programs_.Decoded.Subscribe([this] { AddDecodes(); });
  decodesChanged_ = programs_.DecodesChanged.Subscribe([this] { FillTable(); });
  news_ = programs_.LastNews();
  programs_.WindowOpened(true);
  FillTable();
  ShowPrograms();
}

void Digitale::Unload() {
  decodesChanged_ = {};
  decoded_ = {};
  changed_ = {};
  programs_.WindowOpened(false);
  core::ArrangedWindow::Unload();
}

bool Digitale::Passes(const HeardDecode& heard) const {
  return (!SoloBisogni.IsOn() || heard.need) && (!SoloCQ.IsOn() || heard.isCq) &&
         (!SoloMiei.IsOn() || heard.isMine);
}

core::MemoryRows::Row Digitale::RowOf(const HeardDecode& heard) const {
  const Decode& decode = heard.decode;
  return {TimeText(decode.time),
          std::to_string(decode.snr),
          DelayText(decode),
          std::to_string(decode.df),
          heard.modo.empty() ? OneLine(decode.mode) : heard.modo,
          OneLine(decode.message),
          heard.call,
          heard.need ? programs_.Needs().at(*heard.need).words : "",
          heard.title,
          heard.locator,
          heard.distance > 0 ? base::PlainNumber(heard.distance) : "",
          base::Trim(heard.banda),
          OneLine(heard.header.id)};
}

void Digitale::FillTable() {
  std::vector<std::int64_t> numbers;
  std::vector<core::MemoryRows::Row> rows;
  for (const HeardDecode& each : programs_.Decodes()) {
    if (!Passes(each)) continue;
    numbers.push_back(each.number);
    rows.push_back(RowOf(each));
  }
  const auto key = ChosenKey();
  rows_.SetNumbered(std::move(numbers), std::move(rows));
  if (!programs_.Decodes().empty()) shown_ = programs_.Decodes().front().number;
  ShowRows(key);
}

void Digitale::AddDecodes() {
  const auto& decodes = programs_.Decodes();
  const auto end = std::find_if(decodes.begin(), decodes.end(),
                                [&](const HeardDecode& each) { return each.number <= shown_; });
  // The mark on the newest one stays on the newest one.
  const auto chosen = ChosenKey();
  const bool onTop = Decodifiche.Row() <= 1;
  for (auto at = std::make_reverse_iterator(end); at != decodes.rend(); ++at) {
    if (Passes(*at)) rows_.PutNumbered(at->number, RowOf(*at));
  }
  if (!decodes.empty()) shown_ = decodes.front().number;
  ShowRows(onTop ? std::nullopt : chosen);
}

void Digitale::ShowPrograms() {
  std::vector<core::MemoryRows::Row> rows;
  for (const Program& each : programs_.All()) {
    const digital::Status status = each.status.value_or(digital::Status());
    rows.push_back(
        {OneLine(each.header.id),
         status.dial == 0
             ? std::string()
             : base::FormatNumber(static_cast<double>(status.dial) / kHzPerKhz, "#,##0.000"),
         OneLine(status.mode), StateOf(each), OneLine(status.dxCall)});
  }
  programRows_.SetRows(std::move(rows));
  Programmi.ContentChanged();
  Attesa.SetText(programs_.WaitingText());
  const DatagramCounts& counts = programs_.Counts();
  const std::int64_t dropped = counts.foreign + counts.damaged + counts.unknown + counts.flooded;
  const std::string where = programs_.Listens() ? "In ascolto" : "Non ascolta";
  Ascolto.SetText(dropped == 0 ? where : fmt::format("{}, scartati {}", where, dropped));
  if (programs_.Fault() != fault_ && !programs_.Fault().empty()) Say(programs_.Fault());
  fault_ = programs_.Fault();
  if (programs_.LastNews() != news_) Say(news_ = programs_.LastNews());
}

void Digitale::Answer() {
  const auto number = ChosenKey();
  if (!number) return;
  const HeardDecode* const heard = programs_.FindDecode(*number);
  const std::string call = heard == nullptr ? "" : heard->call;
  Say(programs_.Answer(*number)
          ? fmt::format("Risposto a {}: se il programma non si muove, in WSJT-X manca Accept UDP "
                        "requests",
                        call)
          : fmt::format("Il programma che ha sentito {} non c'è più", call));
}

void Digitale::Halt() {
  programs_.HaltAll();
  Say("Chiesto ai programmi di non trasmettere");
}

void Digitale::Replay() {
  programs_.ReplayAll();
  Say("Chieste ai programmi le decodifiche che hanno");
}

void Digitale::Forget() {
  ForgetMarks();
  programs_.ForgetDecodes();
  Say("Decodifiche tolte");
}

void Digitale::TryAgain() { programs_.TryAgain(); }

}  // namespace brenvo::digital
