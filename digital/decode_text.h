// What stands in a decoded message.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::digital {

struct DecodeText {
  std::string call;     // of the station that sends; empty when it is not told
  std::string to;       // of the one that it calls; empty for all, and where it is not told
  std::string locator;  // of the station that sends: four characters or none
  bool isCq = false;    // calls anybody, or is free for a call
  bool isEnd = false;   // a contact ends with it
};

// "CQ DX K1ABC FN42", "IK0XYZ K1ABC -12", "<IK0XYZ> K1ABC/P RR73", "K1ABC RR73; W9XYZ <KH1/KH7Z>
// -08". Free text tells nothing.
DecodeText ReadDecode(std::string_view message);

}  // namespace brenvo::digital
