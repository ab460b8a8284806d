// Boxes that wait for the operator.
#pragma once

#include <string_view>

namespace brenvo::platform {

enum class MessageIcon { kNone, kInformation, kExclamation, kCritical };

class MessageBox {
 public:
  virtual ~MessageBox() = default;
  // One button, returns when it was pressed. An empty title shows the program's name.
  virtual void Show(MessageIcon icon, std::string_view title, std::string_view text) = 0;
  // Yes and No with the question icon; No when the box is closed by its frame.
  virtual bool AskYesNo(std::string_view title, std::string_view text) = 0;
};

}  // namespace brenvo::platform
