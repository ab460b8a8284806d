#include "conferme/services.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo::conferme {
namespace {

constexpr ServiceFacts kServices[] = {
    {Service::kLotw, "LoTW", "LOTW_QSL_RCVD", "Y", "LOTW_QSLRDATE", "LOTW_QSL_SENT",
     "LOTW_QSLSDATE"},
    {Service::kEqsl, "eQSL", "EQSL_QSL_RCVD", "Y", "EQSL_QSLRDATE", "EQSL_QSL_SENT",
     "EQSL_QSLSDATE"},
    {Service::kQrz, "QRZ", "APP_QRZLOG_STATUS", "C", "APP_QRZLOG_QSLDATE",
     "QRZCOM_QSO_UPLOAD_STATUS", "QRZCOM_QSO_UPLOAD_DATE"},
    {Service::kClubLog, "Club Log", "APP_BRENVO_CLUBLOG_MATCH", "Y", "",
     "CLUBLOG_QSO_UPLOAD_STATUS", "CLUBLOG_QSO_UPLOAD_DATE"},
};

}  // namespace

std::span<const ServiceFacts> Services() { return kServices; }

std::optional<Service> ServiceNamed(std::string_view name) {
  const auto at = std::ranges::find_if(
      kServices, [&](const ServiceFacts& each) { return base::SameText(each.name, name); });
  if (at == std::end(kServices)) return std::nullopt;
  return at->service;
}

}  // namespace brenvo::conferme
