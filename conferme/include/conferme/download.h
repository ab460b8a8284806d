// Reports asked of the services on the net.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "conferme/account.h"
#include "conferme/report.h"
#include "conferme/taking.h"
#include "core/session.h"
#include "platform/web_client.h"

namespace brenvo::conferme {

// What has come whole.
struct Downloaded {
  std::string title;           // of the work that takes it
  std::filesystem::path file;  // as the service gave it; empty where `report` has been read
  std::optional<Report> report;
  // The name of the value that says from when the next one is asked, and what is to stand there:
  // empty where the report itself tells, by Report::lastConfirmed or lastAccepted.
  std::string mark, until;
  bool accepted = false;  // of contacts that the service has, confirmed or not
};

// One at a time. What comes is written to a file beside the database, and is a report only when it
// is whole; nothing of it is stored here.
class Download {
 public:
  struct Ears {
    // A report has come; the next one is asked when it has been taken. False ends it.
    std::function<bool(const Downloaded& downloaded)> got;
    std::function<void(std::int64_t bytes)> progress;
    // All is over: empty, or why it ended early, in Italian.
    std::function<void(const std::string& failure)> ended;
  };
  Download(core::Session& session, Addresses addresses);

  void Start(const Account& account, Ears ears);
  bool IsAtWork() const { return web_ != nullptr; }
  // Ends it; nobody is told.
  void Stop();
  // What the service gave was no report, as it did not accept name or secret.
  void ForgetSecret();

 private:
  enum class Step : std::uint8_t { kConfirmed, kAccepted, kPage, kFile, kRecords, kMatches };
  void Ask(Step step);
  void Came(std::string_view bytes);
  void Ended(const platform::WebEnd& end);
  void TakePage();
  void TakeRecords(const std::string& until);
  void Finish(const std::string& failure);
  void Hand(Downloaded downloaded, std::optional<Step> next);
  std::string Since(std::string_view mark) const;

  core::Session& session_;
  Addresses addresses_;
  Account account_;
  Ears ears_;
  std::unique_ptr<platform::WebClient> web_;
  Step step_ = Step::kConfirmed;
  std::filesystem::path file_;
  std::ofstream out_;
  std::string page_, fileAddress_, until_;
  std::int64_t bytes_ = 0;
  // Of the pages of records that have come.
  std::optional<Report> records_;
  std::set<std::string> ids_;
  std::int64_t lastLogId_ = 0;
};

}  // namespace brenvo::conferme
