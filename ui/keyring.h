// Where the desktop keeps secrets.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace brenvo::ui {

class Keyring {
 public:
  virtual ~Keyring() = default;
  // The answers come later, and not to one whose keyring has gone.
  // Nothing with an empty `failure` is one that it does not have; a failure says in words why
  // nothing can be kept.
  using Found = std::function<void(std::optional<std::string> secret, std::string failure)>;
  virtual void Read(const std::string& name, Found found) = 0;
  using Done = std::function<void(std::string failure)>;
  virtual void Write(const std::string& name, const std::string& secret, Done done) = 0;
  virtual void Forget(const std::string& name) = 0;
};

}  // namespace brenvo::ui
