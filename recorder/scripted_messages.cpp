#include "recorder/scripted_messages.h"

#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

const char* IconWord(platform::MessageIcon icon) {
  switch (icon) {
    case platform::MessageIcon::kInformation:
      return "information";
    case platform::MessageIcon::kExclamation:
      return "exclamation";
    case platform::MessageIcon::kCritical:
      return "critical";
    case platform::MessageIcon::kNone:
      break;
  }
  return "none";
}

}  // namespace

void ScriptedMessages::Show(platform::MessageIcon icon, std::string_view title,
                            std::string_view text) {
  sink_(std::string("message ") + IconWord(icon) + ' ' + Quoted(title) + ' ' + Quoted(text));
}

bool ScriptedMessages::AskYesNo(std::string_view title, std::string_view text) {
  const std::string question = "question " + Quoted(title) + ' ' + Quoted(text);
  if (answers_.empty()) {
    unanswered_ = question;
    throw Refused{"nobody answers the " + question};
  }
  const bool yes = answers_.front();
  answers_.pop_front();
  sink_(question + (yes ? " yes" : " no"));
  return yes;
}

std::optional<std::filesystem::path> ScriptedPicks::Next(std::string_view title,
                                                         std::string_view pattern) {
  if (picks_.empty()) {
    throw Refused{"nobody picks a file for " + Quoted(title) + ' ' + Quoted(pattern)};
  }
  auto pick = std::move(picks_.front());
  picks_.pop_front();
  return pick;
}

}  // namespace brenvo::recorder
