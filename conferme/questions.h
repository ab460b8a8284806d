// What the services are asked, and what their short answers mean. Pure: nothing here asks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "conferme/account.h"
#include "platform/web_client.h"

namespace brenvo::conferme {

// From when: a date, "2001-02-03", with a time behind it for LoTW; empty for all.
platform::WebQuestion AskLotw(const Addresses& addresses, const Account& account, bool confirmed,
                              std::string_view since);
platform::WebQuestion AskEqslInbox(const Addresses& addresses, const Account& account,
                                   std::string_view since);
platform::WebQuestion AskFile(std::string_view address);
// A page of records behind the one of that number.
platform::WebQuestion AskQrz(const Addresses& addresses, const Account& account,
                             std::string_view since, std::int64_t behind);
platform::WebQuestion AskClubLog(const Addresses& addresses, const Account& account,
                                 std::string_view since);
inline constexpr std::int64_t kQrzPage = 250;

// Log files that go there; QRZ takes one record at a time.
platform::WebQuestion SendEqsl(const Addresses& addresses, const Account& account,
                               std::string_view file);
platform::WebQuestion SendQrz(const Addresses& addresses, const Account& account,
                              std::string_view record);
platform::WebQuestion SendClubLog(const Addresses& addresses, const Account& account,
                                  std::string_view file);

// What eQSL says in place of an inbox: where its file is, or nothing new. Throws ReportError for
// everything else; LoginError where it did not accept who asks.
std::optional<std::string> FileOfInbox(std::string_view page, std::string_view eqsl);

// What became of contacts that were sent.
struct SendOutcome {
  bool taken = false;
  bool login = false;              // who asks was not accepted
  std::string told;                // Italian: what the service says of it
  std::vector<std::string> wrong;  // its words about records that it has refused
};
SendOutcome OutcomeOfEqsl(std::string_view page);
SendOutcome OutcomeOfQrz(std::string_view answer);
SendOutcome OutcomeOfClubLog(int status, std::string_view answer);

// Why an answer of that status is none; empty for one that is.
std::string FaultOfStatus(Service service, const platform::WebEnd& end);
bool IsLoginStatus(int status);

// "2001-02-03" of "Sat, 03 Feb 2001 04:05:06 GMT"; empty for what is none.
std::string DayOfHeader(std::string_view date);
// So many days earlier: days of services begin at other times than ours.
std::string DaysBefore(std::string_view day, int days);

}  // namespace brenvo::conferme
