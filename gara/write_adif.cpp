#include <fmt/format.h>

#include "adif/adif_names.h"
#include "adif/adif_writer.h"
#include "base/text.h"
#include "gara/log_file.h"

namespace brenvo::gara {

std::string WriteAdif(const Rule& rule, const LogHead& head, std::span<const LogRow> rows) {
  std::string bytes = adif::AdifHeader({});
  for (const LogRow& row : rows) {
    const Contact& contact = row.contact;
    std::vector<adif::AdifField> fields;
    const auto put = [&](std::string name, std::string value) {
      if (!value.empty()) fields.push_back({std::move(name), std::move(value)});
    };
    put("CALL", base::UpperAscii(contact.call));
    put("QSO_DATE", fmt::format("{:04}{:02}{:02}", contact.time.Year(), contact.time.Month(),
                                contact.time.Day()));
    put("TIME_ON", fmt::format("{:02}{:02}{:02}", contact.time.Hour(), contact.time.Minute(),
                               contact.time.Second()));
    const BandName* const band = FindBand(contact.band);
    const adif::AdifBand* const known =
        band == nullptr ? nullptr : adif::AdifBandAt(base::Mhz(band->mhz));
    if (known != nullptr) put("BAND", std::string(known->name));
    // "DIGI" says of a mode only which family it is of.
    const std::string word = contact.mode == "DIGI" ? "DATA" : contact.mode;
    if (const auto mode = adif::FindAdifMode(word)) {
      put("MODE", mode->mode);
      put("SUBMODE", mode->submode);
    }
    put("RST_SENT", contact.reportSent);
    put("RST_RCVD", contact.reportReceived);
    if (contact.serialSent > 0) put("STX", std::to_string(contact.serialSent));
    if (contact.serialReceived > 0) put("SRX", std::to_string(contact.serialReceived));
    put("STX_STRING", head.exchange);
    put("SRX_STRING", contact.exchange);
    put("GRIDSQUARE", contact.locator);
    put("CONTEST_ID", rule.contestId);
    put("STATION_CALLSIGN", base::UpperAscii(head.call));
    put("MY_GRIDSQUARE", base::UpperAscii(head.locator));
    bytes += adif::AdifLine(fields);
  }
  return bytes;
}

}  // namespace brenvo::gara
