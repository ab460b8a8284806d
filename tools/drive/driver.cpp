#include "drive/driver.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

#include "base/date.h"
#include "base/encoding.h"
#include "core/files.h"
#include "drive/numbers.h"
#include "drive/observations.h"
#include "drive/operator_actions.h"
#include "drive/settings_file.h"
#include "drive/words.h"
#include "file/database_file.h"
#include "frame/palette.h"
#include "recorder/refused.h"
#include "station/station.h"

namespace brenvo::drive {
namespace {

// Of a command that takes the rest of its line as one text, with or without quotes.
constexpr std::size_t kRestOfLine = static_cast<std::size_t>(-1);

// What other programs reach the transceiver through; the script is one of them.
constexpr std::string_view kServer = "RIGSERVER";

// A grid's name and as many rows as a script may want.
constexpr std::size_t kRowNumbers = 100;

std::optional<std::int64_t> NumberAt(const std::vector<std::string>& words, std::size_t at) {
  if (at >= words.size()) return std::nullopt;
  return WholeNumber(words[at]);
}

// 1 for "COM1"; 0 for what is no serial port.
int PortNumber(std::string_view device) {
  if (device.size() != 4 || device.substr(0, 3) != "COM") return 0;
  return device[3] >= '1' && device[3] <= '4' ? device[3] - '0' : 0;
}

// "LogForm" and "CallQso" of "LogForm.CallQso"; the field is empty where none is named.
struct FieldName {
  explicit FieldName(std::string_view name)
      : window(name.substr(0, name.find('.'))),
        field(name.substr(std::min(window.size() + 1, name.size()))) {}
  std::string_view window, field;
};

}  // namespace

Driver::Driver(std::filesystem::path directory, recorder::LineSink out)
    : directory_(std::move(directory)),
      out_(std::move(out)),
      machine_(out_),
      session_(std::make_unique<core::Session>(machine_, directory_)) {
  machine_.SetApplicationDirectory(session_->AppPath);
  machine_.Host().NameOf = [this](const forms::Window& window) {
    return session_->Windows.InstanceName(window);
  };
  machine_.Host().InModal = [this](forms::Window& dialog) { RunInside(dialog); };
  machine_.GetClock().SetGuard(
      [this](const std::function<void()>& tick) { session_->Windows.RunEvent(tick); });
}

Driver::~Driver() = default;

const std::vector<Driver::Verb>& Driver::Verbs() {
  static const std::vector<Verb> kVerbs = {
      {"menu", 1, 1, &Driver::Menu},
      {"set", 2, 2, &Driver::Set},
      {"type", 2, 2, &Driver::Type},
      {"key", 2, 2, &Driver::Key},
      {"focus", 1, 1, &Driver::Focus},
      {"leave", 1, 1, &Driver::Leave},
      {"hover", 1, 1, &Driver::Hover},
      {"tick", 2, 3, &Driver::TickField},
      {"press", 1, 1, &Driver::PressField},
      {"undo", 0, 0, &Driver::Undo},
      {"palette", 1, 1, &Driver::TakeFirstHit},
      {"click", 1, 3, &Driver::Click},
      {"dblclick", 1, 3, &Driver::DoubleClick},
      {"column", 2, 2, &Driver::Column},
      {"sort", 2, 3, &Driver::Sort},
      {"filter", 3, 3, &Driver::Filter},
      {"mark", 2, kRowNumbers, &Driver::Mark},
      {"move", 3, 3, &Driver::MoveColumn},
      {"width", 3, 3, &Driver::Width},
      {"select", 3, 3, &Driver::Select},
      {"edit", 4, 4, &Driver::Edit},
      {"remove", 2, 2, &Driver::Remove},
      {"drop", 2, 2, &Driver::Drop},
      {"draw", 5, 5, &Driver::Draw},
      {"wheel", 3, 3, &Driver::Wheel},
      {"close", 1, 1, &Driver::Close},
      {"resize", 3, 3, &Driver::Resize},
      {"answer", 1, 1, &Driver::Answer},
      {"clock", 1, 1, &Driver::SetClock},
      {"advance", 1, 1, &Driver::Advance},
      {"receive", 2, 2, &Driver::Receive},
      {"datagram", 3, 3, &Driver::Datagram},
      {"peer-close", 1, 1, &Driver::PeerClose},
      {"wave-end", 1, 1, &Driver::WaveEnd},
      {"fail", 1, 1, &Driver::Fail},
      {"process", 4, 4, &Driver::Process},
      {"http", 2, 2, &Driver::Http},
      {"setting", 2, 3, &Driver::Setting},
      {"get", 1, 1, &Driver::Get},
      {"enabled", 1, 1, &Driver::Enabled},
      {"grid", 1, 1, &Driver::Grid},
      {"status", 1, 1, &Driver::Status},
      {"marks", 1, 1, &Driver::Marks},
      {"text", 1, 1, &Driver::Text},
      {"list", 1, 1, &Driver::List},
      {"windows", 0, 0, &Driver::WindowNames},
      {"sql", 1, kRestOfLine, &Driver::Sql},
      {"exec", 1, kRestOfLine, &Driver::Exec},
      {"echo", 0, kRestOfLine, &Driver::Echo},
  };
  return kVerbs;
}

std::optional<ScriptFailure> Driver::Run(std::istream& script) {
  script_ = &script;
  const std::filesystem::path file = core::FileIn(session_->AppPath, "Brenvo.ini");
  recorder::MemorySettings& settings = machine_.Settings();
  settings.SetAll(ReadSettings(file));
  const recorder::MemorySettings::Values before = settings.All();
  std::optional<ScriptFailure> failure = RunScript();
  try {
    if (settings.All() != before) WriteSettings(file, settings.All());
  } catch (const recorder::Refused& refused) {
    if (!failure) failure = ScriptFailure{0, refused.reason};
  }
  return failure;
}

std::optional<ScriptFailure> Driver::RunScript() {
  try {
    frame_ = station::StartStation(*session_);
    if (frame_ == nullptr) return ScriptFailure{0, "the station does not start"};
    bool more = true;
    while (more) {
      try {
        more = RunNextLine();
      } catch (const ScriptEnded&) {
        more = false;
      } catch (const forms::ProgramEnded&) {
        LeaveProgram();
      }
    }
    CheckAnswers();
  } catch (const recorder::Refused& refused) {
    return failure_ ? failure_ : ScriptFailure{line_, refused.reason};
  }
  return std::nullopt;
}

bool Driver::RunNextLine() {
  std::string line;
  if (!std::getline(*script_, line)) return false;
  ++line_;
  try {
    RunLine(line);
  } catch (const recorder::Refused& refused) {
    if (!failure_) failure_ = ScriptFailure{line_, refused.reason};
    throw;
  }
  // A window that handles everything may have taken a refusal for a failure of its own.
  if (failure_) throw recorder::Refused{failure_->reason};
  if (const auto question = machine_.Messages().Unanswered()) {
    throw recorder::Refused{"nobody answers the " + *question};
  }
  return true;
}

void Driver::RunLine(const std::string& line) {
  Words words = SplitWords(line);
  if (words.empty()) return;
  const auto& verbs = Verbs();
  const auto verb = std::find_if(verbs.begin(), verbs.end(),
                                 [&](const Verb& each) { return each.name == words.front(); });
  if (verb == verbs.end()) throw recorder::Refused{"unknown command " + words.front()};
  if (verb->most == kRestOfLine && words.size() > 1) {
    words = {RestOfLine(line)};
  } else {
    words.erase(words.begin());
  }
  if (words.size() < verb->least || words.size() > verb->most) {
    throw recorder::Refused{std::string(verb->name) + " wants other words than these"};
  }
  Perform(*verb, words);
}

void Driver::Perform(const Verb& verb, const Words& words) {
  // The ticks of a passing time are events of their own, not parts of one.
  if (!session_) {
    try {
      (this->*verb.run)(words);
    } catch (const std::exception& failure) {
      machine_.Host().ReportFailure(failure.what());
    }
  } else if (verb.name == "advance") {
    Advance(words);
  } else {
    session_->Windows.RunEvent([&] { (this->*verb.run)(words); });
    if (session_->Windows.Find("Brenvo") == nullptr) LeaveProgram();
  }
}

void Driver::RunInside(forms::Window& dialog) {
  while (dialog.Visible()) {
    if (!RunNextLine()) throw ScriptEnded();
  }
}

void Driver::CheckAnswers() const {
  if (machine_.HasUnusedAnswers())
    throw recorder::Refused{"an answer is left that nothing asked for"};
}

void Driver::LeaveProgram() {
  frame_ = nullptr;
  session_.reset();
}

core::Session& Driver::Running() const {
  if (!session_) throw recorder::Refused{"the program has ended"};
  return *session_;
}

forms::Window& Driver::FindWindow(std::string_view name) const {
  forms::Window* window = Running().Windows.FindInstance(name);
  if (window == nullptr) throw recorder::Refused{"there is no window " + std::string(name)};
  return *window;
}

forms::Field& Driver::FindField(std::string_view name) const {
  const FieldName parts(name);
  forms::Field* field = FindWindow(parts.window).FindField(parts.field);
  if (field == nullptr) throw recorder::Refused{"there is no field " + std::string(name)};
  return *field;
}

forms::Window& Driver::ReachWindow(std::string_view name) {
  forms::Window& window = FindWindow(name);
  const forms::Window* modal = machine_.Host().Modal();
  if (modal != nullptr && modal != &window) {
    throw recorder::Refused{std::string(name) + " does not answer while " + modal->Name() +
                            " waits"};
  }
  if (&window != frame_) session_->Windows.Activated(window);
  return window;
}

forms::Field& Driver::ReachField(std::string_view name) {
  forms::Field& field = FindField(name);
  ReachWindow(FieldName(name).window);
  return field;
}

void Driver::Menu(const Words& words) { Press(ReachField("Brenvo." + words[0])); }
void Driver::Set(const Words& words) { SetValue(ReachField(words[0]), words[1]); }

// A key that fails ends nothing but its own event: the operator goes on typing.
void Driver::Type(const Words& words) {
  TypeText(ReachField(words[0]), words[1],
           [this](const std::function<void()>& key) { session_->Windows.RunEvent(key); });
}

void Driver::Key(const Words& words) { PressKey(ReachField(words[0]), words[1]); }
void Driver::Focus(const Words& words) { ReachField(words[0]).Focus(); }
void Driver::Leave(const Words& words) { ReachField(words[0]).Leave(); }
void Driver::Hover(const Words& words) { ReachField(words[0]).Hover(); }

void Driver::TickField(const Words& words) {
  forms::Field& field = ReachField(words[0]);
  if (words.size() == 2) {
    Tick(field, words[1]);
  } else {
    TickEntry(field, WholeNumber(words[1]), words[2]);
  }
}

void Driver::PressField(const Words& words) { Press(ReachField(words[0])); }

void Driver::TakeFirstHit(const Words& words) {
  ReachField("Brenvo.cmPalette");
  const std::vector<frame::KnownCommand> hits = frame::CommandsFor(*session_, words[0]);
  if (hits.empty()) throw recorder::Refused{"no command for " + words[0]};
  frame::PressCommand(*session_, hits.front());
}

void Driver::Undo(const Words&) { Press(ReachField("LogForm.cmAnnulla")); }

void Driver::Click(const Words& words) {
  ClickAt(ReachField(words[0]), NumberAt(words, 1), NumberAt(words, 2));
}

void Driver::DoubleClick(const Words& words) {
  DoubleClickAt(ReachField(words[0]), NumberAt(words, 1), NumberAt(words, 2));
}

void Driver::Column(const Words& words) {
  ClickHeading(ReachField(words[0]), WholeNumber(words[1]));
}

void Driver::Sort(const Words& words) {
  const bool add = words.size() == 3;
  if (add && words[2] != "add") throw recorder::Refused{"sort knows add alone, not " + words[2]};
  SortTable(ReachField(words[0]), words[1], add);
}

void Driver::Filter(const Words& words) {
  FilterTable(ReachField(words[0]), words[1], words[2],
              [this](const std::function<void()>& key) { session_->Windows.RunEvent(key); });
}

void Driver::Mark(const Words& words) {
  forms::Field& table = ReachField(words[0]);
  for (std::size_t i = 1; i < words.size(); ++i) ToggleMark(table, WholeNumber(words[i]));
}

void Driver::MoveColumn(const Words& words) {
  MoveTableColumn(ReachField(words[0]), words[1], words[2]);
}

void Driver::Width(const Words& words) {
  DrawColumn(ReachField(words[0]), words[1], WholeNumber(words[2]));
}

void Driver::Select(const Words& words) {
  SelectText(ReachField(words[0]), WholeNumber(words[1]), WholeNumber(words[2]));
}

void Driver::Edit(const Words& words) {
  EditGridCell(ReachField(words[0]), WholeNumber(words[1]), WholeNumber(words[2]), words[3]);
}

void Driver::Remove(const Words& words) {
  RemoveGridRow(ReachField(words[0]), WholeNumber(words[1]));
}

void Driver::Drop(const Words& words) { ReachField(words[0]).Drop(words[1]); }

void Driver::Wheel(const Words& words) {
  TurnWheel(ReachField(words[0]), WholeNumber(words[1]), words[2]);
}

void Driver::Draw(const Words& words) {
  if (words[0] != "Brenvo.PicBuf1") throw recorder::Refused{"only Brenvo.PicBuf1 can be drawn on"};
  ReachWindow("Brenvo");
  int numbers[4];
  for (std::size_t i = 0; i < 4; ++i) numbers[i] = static_cast<int>(WholeNumber(words[i + 1]));
  frame_->MapRectangleDrawn(numbers[0], numbers[1], numbers[2], numbers[3]);
}

void Driver::Close(const Words& words) {
  forms::Window& window = ReachWindow(words[0]);
  session_->Windows.Unload(window);
}

void Driver::Resize(const Words& words) {
  forms::Window& window = ReachWindow(words[0]);
  forms::Bounds bounds = window.GetBounds();
  bounds.width = base::Twips(static_cast<int>(WholeNumber(words[1])));
  bounds.height = base::Twips(static_cast<int>(WholeNumber(words[2])));
  window.Moved(bounds, forms::WindowState::kNormal);
}

// Besides yes and no, a file for the next file dialog, or cancel.
void Driver::Answer(const Words& words) {
  if (words[0] == "yes" || words[0] == "no") {
    machine_.Messages().QueueAnswer(words[0] == "yes");
  } else if (words[0] == "cancel") {
    machine_.Picks().Queue(std::nullopt);
  } else {
    machine_.Picks().Queue(directory_ / words[0]);
  }
}

void Driver::SetClock(const Words& words) {
  const auto now = base::ParseIso(words[0]);
  if (!now) throw recorder::Refused{'"' + words[0] + "\" is no time"};
  machine_.SetNow(*now);
}

void Driver::Advance(const Words& words) { machine_.Advance(WholeNumber(words[0])); }

void Driver::Receive(const Words& words) {
  const std::string bytes = base::ToLatin1(words[1]);
  if (const int port = PortNumber(words[0])) {
    machine_.Serial().Receive(port, bytes);
  } else if (words[0] == kServer) {
    machine_.Servers().Receive(kServer, 1, bytes);
  } else {
    machine_.Tcp().Receive(words[0], bytes);
  }
}

// In hexadecimal digits, or a file's bytes.
void Driver::Datagram(const Words& words) {
  const std::size_t colon = words[1].rfind(':');
  if (colon == std::string::npos) throw recorder::Refused{'"' + words[1] + "\" is no address"};
  const platform::UdpAddress from{
      words[1].substr(0, colon),
      static_cast<int>(WholeNumber(std::string_view(words[1]).substr(colon + 1)))};
  machine_.Udp().Receive(words[0], from, BytesOf(words[2]));
}

std::string Driver::BytesOf(const std::string& word) const {
  if (word.starts_with('@')) {
    std::ifstream file(directory_ / word.substr(1), std::ios::binary);
    if (!file) throw recorder::Refused{"there is no file " + word.substr(1)};
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string bytes;
  for (std::size_t i = 0; i < word.size(); i += 2) {
    unsigned byte = 0;
    const char* const digits = word.data() + i;
    const auto [end, error] =
        std::from_chars(digits, word.data() + std::min(i + 2, word.size()), byte, 16);
    if (error != std::errc() || end != digits + 2) {
      throw recorder::Refused{'"' + word + "\" is no pairs of hexadecimal digits"};
    }
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

void Driver::PeerClose(const Words& words) {
  if (words[0] == kServer) {
    machine_.Servers().PeerClose(kServer, 1);
  } else {
    machine_.Tcp().PeerClose(words[0]);
  }
}

void Driver::WaveEnd(const Words& words) {
  machine_.Waves().Complete(static_cast<int>(WholeNumber(words[0])));
}

void Driver::Fail(const Words& words) {
  if (const int port = PortNumber(words[0])) {
    machine_.Serial().FailNext(port);
  } else if (words[0] == "printer") {
    machine_.GetPrinter().FailNext();
  } else if (words[0] == "WSJTX" || words[0] == "ADIF" || words[0] == "CW") {
    machine_.Udp().FailNext(words[0]);
  } else if (words[0] == "RIG" || words[0] == "ROTOR" || Running().Windows.Knows(words[0])) {
    machine_.Tcp().FailNext(words[0]);
  } else if (words[0] == kServer) {
    machine_.Servers().FailNext(kServer);
  } else if (words[0] == "HTTP") {
    machine_.Web().Queue({0, "", "il servizio non si raggiunge"});
  } else if (words[0].starts_with("rigctl") || words[0].starts_with("rotctl")) {
    machine_.Processes().FailNext(words[0]);
  } else {
    throw recorder::Refused{"there is no device " + words[0]};
  }
}

// The name, the arguments, the status, and a file with what it writes.
void Driver::Process(const Words& words) {
  machine_.Processes().Queue(words[0], words[1],
                             {static_cast<int>(WholeNumber(words[2])), BytesOf(words[3])});
}

// The status, and a file with what the service answers.
void Driver::Http(const Words& words) {
  machine_.Web().Queue({static_cast<int>(WholeNumber(words[0])), BytesOf(words[1]), ""});
}

void Driver::Setting(const Words& words) {
  if (words.size() == 3) {
    machine_.Settings().SaveSetting(words[0], words[1], words[2]);
  } else {
    out_("setting " + words[0] + ' ' + words[1] + ' ' +
         recorder::Quoted(machine_.Settings().GetSetting(words[0], words[1], "")));
  }
}

// A field comes before a property of the window, and that before a field's caption.
void Driver::Get(const Words& words) {
  const FieldName name(words[0]);
  const forms::Window& window = FindWindow(name.window);
  if (window.FindField(name.field) == nullptr) {
    if (PrintProperty(out_, words[0], window, name.field)) return;
    constexpr std::string_view kCaption = ".Caption";
    if (name.field.ends_with(kCaption)) {
      const auto captioned = name.field.substr(0, name.field.size() - kCaption.size());
      if (const forms::Field* field = window.FindField(captioned)) {
        out_("get " + words[0] + ' ' + recorder::Quoted(field->Caption()));
        return;
      }
    }
  }
  PrintField(out_, words[0], FindField(words[0]));
}

void Driver::Enabled(const Words& words) { PrintEnabled(out_, words[0], FindField(words[0])); }
void Driver::Grid(const Words& words) { PrintGrid(out_, words[0], FindField(words[0])); }
void Driver::Status(const Words& words) { PrintStatus(out_, words[0], FindWindow(words[0])); }
void Driver::Marks(const Words& words) { PrintMarks(out_, words[0], FindWindow(words[0])); }
void Driver::Text(const Words& words) { PrintRuns(out_, words[0], FindField(words[0])); }
void Driver::List(const Words& words) { PrintList(out_, words[0], FindField(words[0])); }

void Driver::WindowNames(const Words&) {
  std::string line = "windows";
  if (session_) {
    for (const forms::Window* window : session_->Windows.Loaded()) {
      line += ' ' + session_->Windows.InstanceName(*window);
    }
  }
  out_(line);
}

// A program that has ended leaves its file to be looked at.
void Driver::WithDatabase(const std::function<void(engine::Database&)>& use) const {
  if (session_ && session_->IsOpen()) {
    use(session_->Db);
  } else {
    engine::Database database = file::OpenDatabaseFile(core::FileIn(directory_, "Brenvo.mdb"));
    use(database);
  }
}

void Driver::Sql(const Words& words) {
  WithDatabase([&](engine::Database& db) { PrintRows(out_, *db.OpenSnapshot(words[0])); });
}

void Driver::Exec(const Words& words) {
  WithDatabase([&](engine::Database& db) { db.Execute(words[0]); });
}

void Driver::Echo(const Words& words) { out_(words.empty() ? std::string() : words[0]); }

}  // namespace brenvo::drive
