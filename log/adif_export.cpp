#include "log/adif_export.h"

#include <fmt/format.h>

#include "base/date.h"
#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"

namespace brenvo {
namespace {

enum class AdifKind { kText, kDate, kTime, kFrequency, kYesNo };

struct AdifTag {
  const char* name;
  const char* column;
  AdifKind kind = AdifKind::kText;
};

// In the order of the file. The operator's name goes out as the comment.
constexpr AdifTag kTags[] = {
    {"call", "Call"},
    {"qso_date", "DataQso", AdifKind::kDate},
    {"time_on", "DataQso", AdifKind::kTime},
    {"band", "Banda"},
    {"mode", "Modo"},
    {"rst_sent", "QrkDato"},
    {"rst_rcvd", "QrkRicevuto"},
    {"qsl_sent", "QslInviata", AdifKind::kYesNo},
    {"qsl_rcvd", "QslRicevuta", AdifKind::kYesNo},
    {"comment", "Qra"},
    {"freq", "Frequenza", AdifKind::kFrequency},
    {"qsl_via", "Manager"},
};

std::string TextOf(const Value& value, AdifKind kind) {
  if (kind == AdifKind::kYesNo) return value.Bool() ? "Y" : "N";
  if (value.IsNull()) return {};
  const DateTime date =
      kind == AdifKind::kDate || kind == AdifKind::kTime ? value.Date() : DateTime();
  switch (kind) {
    case AdifKind::kDate:
      return fmt::format("{:04}{:02}{:02}", date.Year(), date.Month(), date.Day());
    case AdifKind::kTime:
      return fmt::format("{:02}{:02}", date.Hour(), date.Minute());
    case AdifKind::kFrequency:
      return Trim(FormatNumber(value.Number(), "####.000"));
    case AdifKind::kText:
    case AdifKind::kYesNo:
      break;
  }
  return ToWindows1252(value.Text());
}

}  // namespace

std::string AdifContact(Recordset& contact) {
  std::string lines;
  for (const AdifTag& tag : kTags) {
    const std::string text = TextOf(contact.Field(tag.column), tag.kind);
    lines += fmt::format("<{}:{}{}>{} \r\n", tag.name, text.size(),
                         tag.kind == AdifKind::kDate ? ":d" : "", text);
  }
  return lines + "<eor>\r\n";
}

}  // namespace brenvo
