// Questions to a service on the net.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::platform {

struct WebField {
  std::string name, value;
  // What goes out in place of `value` is a secret of this name, "LoTW IK0XYZ": the machine has it
  // of the desktop's keyring or asks the operator for it. Nobody above ever holds it.
  std::string secret{};
  std::string file{};  // `value` is the content of a file of this name; in parts only
};

enum class WebForm : std::uint8_t {
  kQuery,   // GET, the fields behind the address
  kFields,  // POST, the fields as a form
  kParts,   // POST, each field a part: files can be among them
};

struct WebQuestion {
  WebForm form = WebForm::kQuery;
  // Without fields: "https://host/path". Plain http reaches this computer alone.
  std::string address;
  std::vector<WebField> fields;
  int limit = 60'000;          // milliseconds until the answer is whole
  int patience = 60'000;       // milliseconds in which nothing comes
  std::size_t most = 1 << 20;  // bytes of the answer
};

struct WebEnd {
  int status = 0;                              // of HTTP; 0 where nobody has answered
  std::map<std::string, std::string> headers;  // by their names in small letters
  // Why there is no whole answer, in Italian ("la risposta è troncata"); empty for a whole one, of
  // whatever status.
  std::string failure;
};

class WebClient {
 public:
  // Nothing that was asked outlives it, nor a secret that the operator has typed for it: until then
  // one that no keyring keeps is asked for once.
  virtual ~WebClient() = default;
  // Begins; one question at a time, an earlier one is stopped first. Redirections are followed on
  // the same host and door alone, and a certificate that is not well ends it.
  virtual void Ask(const WebQuestion& question) = 0;
  virtual bool IsAsking() const = 0;
  // Ends it without OnEnd; harmless when nothing is asked.
  virtual void Stop() = 0;
  // The service has not accepted it: it is asked for anew, and the keyring loses it.
  virtual void Forget(std::string_view secret) = 0;

  std::function<void(std::string_view bytes)> OnData;  // of the answer's body, as they come
  std::function<void(const WebEnd& end)> OnEnd;
};

}  // namespace brenvo::platform
