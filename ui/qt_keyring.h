// The desktop's own keyring: the Secret Service of GNOME and others, or KWallet.
#pragma once

#include <QObject>

#include "keyring.h"

namespace brenvo::ui {

class QtKeyring : public Keyring {
 public:
  void Read(const std::string& name, Found found) override;
  void Write(const std::string& name, const std::string& secret, Done done) override;
  void Forget(const std::string& name) override;

 private:
  QObject guard_;
};

}  // namespace brenvo::ui
