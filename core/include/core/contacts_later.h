// Stored contacts told a moment later, to windows that only look.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "core/contacts_changed.h"
#include "core/session.h"
#include "forms/signal.h"

namespace brenvo::core {

// Whoever stores a contact does not wait for those who show it. Of the log alone.
class ContactsLater {
 public:
  // Milliseconds behind the last one stored.
  static constexpr int kPause = 200;

  // `some` runs after the pause, with those stored meanwhile in their order. `many` runs at once,
  // when nobody knows which have changed; what waits is then forgotten, as it is when the database
  // is closed.
  ContactsLater(Session& session, std::function<void(const std::vector<OneContact>&)> some,
                std::function<void()> many);
  // What waits is told.
  void TellNow();

 private:
  void Hear(const ContactsChanged& change);
  void Forget();

  std::function<void(const std::vector<OneContact>&)> some_;
  std::function<void()> many_;
  std::vector<OneContact> waiting_;
  std::unique_ptr<platform::Timer> pause_;
  forms::Subscription stored_, closing_;
};

}  // namespace brenvo::core
