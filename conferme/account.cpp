#include "conferme/account.h"

#include "base/text.h"
#include "core/call_forms.h"
#include "core/preferences.h"
#include "core/stations.h"

namespace brenvo::conferme {

Account AccountOf(core::Session& session, Service service, std::string_view call) {
  const std::string current =
      base::UpperAscii(base::Trim(core::CurrentStationRow(session.Db).Call));
  Account account{service, {}, call.empty() ? current : base::UpperAscii(base::Trim(call))};
  const bool ofCurrent = account.call == current;
  switch (service) {
    case Service::kLotw:
      // One account holds all calls of an operator.
      account.user = base::Trim(session.Choices.Get<core::choice::kLotwUser>());
      if (account.user.empty()) account.user = base::Lower(core::BaseCall(current));
      break;
    case Service::kEqsl:
      if (ofCurrent) account.user = base::Trim(session.Choices.Get<core::choice::kEqslUser>());
      if (account.user.empty()) account.user = account.call;
      break;
    case Service::kQrz:
      account.user = account.call;
      break;
    case Service::kClubLog:
      account.user = base::Trim(session.Choices.Get<core::choice::kClubLogUser>());
      break;
  }
  return account;
}

std::string SecretOf(const Account& account) {
  return std::string(FactsOf(account.service).name) + ' ' + account.user;
}

}  // namespace brenvo::conferme
