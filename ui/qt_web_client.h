// Questions by HTTPS.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <string>

#include "keyring.h"
#include "platform/web_client.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

// A secret as the operator types it, and whether the keyring is to keep it; nothing when he
// cancels. `why` there is no keyring, empty where there is one.
struct TypedSecret {
  std::string secret;
  bool keep = false;
};
using SecretPrompt =
    std::function<std::optional<TypedSecret>(const std::string& name, const std::string& why)>;
std::optional<TypedSecret> AskSecret(const std::string& name, const std::string& why);

class QtWebClient : public platform::WebClient {
 public:
  // The keyring outlives it.
  QtWebClient(EventGate& gate, Keyring& keyring, SecretPrompt prompt);
  ~QtWebClient() override;
  void Ask(const platform::WebQuestion& question) override;
  bool IsAsking() const override { return asking_; }
  void Stop() override;
  void Forget(std::string_view secret) override;

 private:
  void NextSecret();
  void SecretRead(const std::string& name, const std::optional<std::string>& secret,
                  const std::string& failure);
  void Send();
  void Take();
  void Finish();
  void End(platform::WebEnd end);
  void Fail(const std::string& why) { End({0, {}, why}); }
  std::string FailureOf(const QNetworkReply& reply) const;
  void DropReply();
  QByteArray ValueOf(const platform::WebField& field) const;

  EventGate& gate_;
  Keyring& keyring_;
  SecretPrompt prompt_;
  std::unique_ptr<QObject> guard_;  // of the question in work; each has one of its own
  QNetworkAccessManager manager_;
  QNetworkReply* reply_ = nullptr;
  QTimer limit_;
  platform::WebQuestion question_;
  bool asking_ = false, tooLate_ = false;
  std::size_t taken_ = 0;
  std::string certificate_;  // what is wrong with it
  std::map<std::string, std::string, std::less<>> secrets_;
};

}  // namespace brenvo::ui
