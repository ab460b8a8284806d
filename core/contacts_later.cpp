#include "core/contacts_later.h"

#include <utility>

namespace brenvo::core {

ContactsLater::ContactsLater(Session& session,
                             std::function<void(const std::vector<OneContact>&)> some,
                             std::function<void()> many)
    : some_(std::move(some)), many_(std::move(many)), pause_(session.Machine.MakeTimer()) {
  pause_->SetInterval(kPause);
  pause_->OnTick = [this, &session] { session.Windows.RunEvent([this] { TellNow(); }); };
  stored_ = session.Contacts.Subscribe([this](const ContactsChanged& change) { Hear(change); });
  closing_ = session.Closing.Subscribe([this] { Forget(); });
}

void ContactsLater::Hear(const ContactsChanged& change) {
  if (change.table != ContactTable::kLog) return;
  if (const auto* one = std::get_if<OneContact>(&change.which)) {
    waiting_.push_back(*one);
    pause_->SetEnabled(false);
    pause_->SetEnabled(true);
  } else {
    Forget();
    many_();
  }
}

void ContactsLater::Forget() {
  pause_->SetEnabled(false);
  waiting_.clear();
}

void ContactsLater::TellNow() {
  pause_->SetEnabled(false);
  if (const auto waiting = std::exchange(waiting_, {}); !waiting.empty()) some_(waiting);
}

}  // namespace brenvo::core
