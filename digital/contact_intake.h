// Contacts that other programs have logged, on their way into the log: each of them once.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"
#include "core/session.h"
#include "digital/datagrams.h"

namespace brenvo::digital {

// A contact that could not be stored by now.
struct WaitingContact {
  adif::AdifRecord record;
  std::string reason;  // Italian
};

// One contact comes as type 5, as type 12, as a plain record, and again by whoever relays these; it
// is stored once, also across a restart, and nothing that the log has is stored again. What cannot
// be stored waits, stands in a file meanwhile, and is tried again.
class ContactIntake {
 public:
  // What waits, and what the log can never hold, by the names of their files in the application
  // directory.
  static constexpr std::string_view kWaitingFile = "Digitale in attesa.adi",
                                    kRefusedFile = "Digitale rifiutati.adi";
  // Milliseconds that a type 5 waits for its type 12, and between two attempts.
  static constexpr int kHold = 500, kRetry = 10000;

  // `tell` gets in words what became of a contact.
  ContactIntake(core::Session& session, std::function<void(const std::string& text)> tell);
  ~ContactIntake();
  ContactIntake(const ContactIntake&) = delete;
  ContactIntake& operator=(const ContactIntake&) = delete;

  void TakeLogged(const QsoLogged& logged, bool isJtdx);
  // A log file's text, of a program or of nobody in particular: all its records. False when it
  // holds none.
  bool TakeAdif(std::string_view text);

  void TryAgain();
  const std::vector<WaitingContact>& Waiting() const { return waiting_; }

  // Takes a contact in the place of the log; false when it does not. May be empty.
  std::function<bool(const adif::AdifRecord& record)> Divert;

 private:
  void TakeRecord(const adif::AdifRecord& record);
  void StoreHeld();
  void Store(const adif::AdifRecord& record);
  // False when it has to wait; `reason` says why.
  bool TryStore(const adif::AdifRecord& record, std::string& reason);
  void StoreNow(const adif::AdifRecord& record);
  void Wait(const adif::AdifRecord& record, const std::string& reason);
  void Refuse(const adif::AdifRecord& record, const std::string& reason);
  void ReadWaiting();
  void WriteWaiting();
  adif::AdifRecord WithOwnPlace(const adif::AdifRecord& record);

  core::Session& session_;
  std::function<void(const std::string& text)> tell_;
  std::unique_ptr<platform::Timer> holding_, retrying_;
  std::vector<adif::AdifRecord> held_;  // of type 5
  std::vector<WaitingContact> waiting_;
  forms::Subscription closing_;
};

}  // namespace brenvo::digital
