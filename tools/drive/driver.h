// The whole station without a screen, run by a script.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "frame/main_frame.h"
#include "recorder/recording_platform.h"

namespace brenvo::drive {

// Why a script failed.
struct ScriptFailure {
  int line = 0;  // counted from 1; 0 when no line is to blame
  std::string reason;
};

// Runs scripts on a station that works in an application directory. Each line is one event. While
// a dialog waits, the script goes on inside it. What the station does and what the script asks for
// comes out of the sink, line by line.
class Driver {
 public:
  Driver(std::filesystem::path directory, recorder::LineSink out);
  ~Driver();

  // Starts the station and runs the script to its end; what is open then stays as it is, with no
  // shutdown. The directory's settings are taken up before and kept after. Nothing comes back when
  // all went well.
  [[nodiscard]] std::optional<ScriptFailure> Run(std::istream& script);

 private:
  using Words = std::vector<std::string>;
  struct Verb {
    std::string_view name;
    std::size_t least, most;  // words behind it
    void (Driver::*run)(const Words&);
  };
  static const std::vector<Verb>& Verbs();
  struct ScriptEnded {};

  // Run between the reading and the writing of the settings.
  std::optional<ScriptFailure> RunScript();
  bool RunNextLine();
  void RunLine(const std::string& line);
  void Perform(const Verb& verb, const Words& words);
  void RunInside(forms::Window& dialog);
  void CheckAnswers() const;
  void LeaveProgram();
  void WithDatabase(const std::function<void(engine::Database&)>& use) const;

  // Windows and fields by the names of a script.
  core::Session& Running() const;
  forms::Window& FindWindow(std::string_view name) const;
  forms::Field& FindField(std::string_view name) const;
  // The same for what the operator is about to do: the window comes to the front.
  forms::Window& ReachWindow(std::string_view name);
  forms::Field& ReachField(std::string_view name);

  void Menu(const Words& words);
  void Set(const Words& words);
  void Type(const Words& words);
  void Key(const Words& words);
  void Focus(const Words& words);
  void Leave(const Words& words);
  void Hover(const Words& words);
  void TickField(const Words& words);
  void PressField(const Words& words);
  void TakeFirstHit(const Words& words);
  void Undo(const Words& words);
  void Click(const Words& words);
  void DoubleClick(const Words& words);
  void Column(const Words& words);
  void Sort(const Words& words);
  void Filter(const Words& words);
  void Mark(const Words& words);
  void MoveColumn(const Words& words);
  void Width(const Words& words);
  void Select(const Words& words);
  void Edit(const Words& words);
  void Remove(const Words& words);
  void Drop(const Words& words);
  void Wheel(const Words& words);
  void Draw(const Words& words);
  void Close(const Words& words);
  void Resize(const Words& words);

  void Answer(const Words& words);
  void SetClock(const Words& words);
  void Advance(const Words& words);
  void Receive(const Words& words);
  void Datagram(const Words& words);
  std::string BytesOf(const std::string& word) const;
  void PeerClose(const Words& words);
  void WaveEnd(const Words& words);
  void Fail(const Words& words);
  void Process(const Words& words);
  void Http(const Words& words);
  void Setting(const Words& words);

  void Get(const Words& words);
  void Enabled(const Words& words);
  void Grid(const Words& words);
  void Status(const Words& words);
  void Marks(const Words& words);
  void Text(const Words& words);
  void List(const Words& words);
  void WindowNames(const Words& words);
  void Sql(const Words& words);
  void Exec(const Words& words);
  void Echo(const Words& words);

  std::filesystem::path directory_;
  recorder::LineSink out_;
  recorder::RecordingPlatform machine_;
  std::unique_ptr<core::Session> session_;  // empty once the program has ended
  frame::MainFrame* frame_ = nullptr;
  std::istream* script_ = nullptr;
  int line_ = 0;
  std::optional<ScriptFailure> failure_;
};

}  // namespace brenvo::drive
