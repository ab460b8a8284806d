// Message boxes that nobody sees, and answers that were given beforehand.
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/message_box.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// Writes `message critical "title" "text"` (exclamation, information, none) and
// `question "title" "text" yes`. The title is the one given, empty when none is.
class ScriptedMessages : public platform::MessageBox {
 public:
  explicit ScriptedMessages(LineSink sink) : sink_(std::move(sink)) {}

  void Show(platform::MessageIcon icon, std::string_view title, std::string_view text) override;
  // Takes the oldest answer; Refused when there is none.
  bool AskYesNo(std::string_view title, std::string_view text) override;

  void QueueAnswer(bool yes) { answers_.push_back(yes); }
  // The question that was refused, as `question "title" "text"`: a window that handles everything
  // may have handled the refusal too.
  const std::optional<std::string>& Unanswered() const { return unanswered_; }
  // Answers that no question has asked for yet.
  std::size_t UnusedAnswers() const { return answers_.size(); }

 private:
  LineSink sink_;
  std::deque<bool> answers_;
  std::optional<std::string> unanswered_;
};

// The file dialog in the same manner; it writes nothing.
class ScriptedPicks {
 public:
  // Takes the oldest pick; Refused when there is none.
  std::optional<std::filesystem::path> Next(std::string_view title, std::string_view pattern);

  // Nothing means that the operator cancels.
  void Queue(std::optional<std::filesystem::path> file) { picks_.push_back(std::move(file)); }
  std::size_t Unused() const { return picks_.size(); }

 private:
  std::deque<std::optional<std::filesystem::path>> picks_;
};

}  // namespace brenvo::recorder
