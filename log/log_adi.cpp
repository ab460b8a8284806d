#include "log_adi.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <variant>

#include "base/date.h"
#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "core/log_contact.h"

namespace brenvo::log {
namespace {

enum class AdifKind { kText, kDate, kTime, kFrequency, kYesNo };

struct AdifTag {
  std::string_view name;
  std::string_view column;
  AdifKind kind = AdifKind::kText;
};

namespace column = core::column;

// In the order of the file. The operator's name goes out as the comment.
constexpr AdifTag kTags[] = {
    {"call", column::kCall},
    {"qso_date", column::kDataQso, AdifKind::kDate},
    {"time_on", column::kDataQso, AdifKind::kTime},
    {"band", column::kBanda},
    {"mode", column::kModo},
    {"rst_sent", column::kQrkDato},
    {"rst_rcvd", column::kQrkRicevuto},
    {"qsl_sent", column::kQslInviata, AdifKind::kYesNo},
    {"qsl_rcvd", column::kQslRicevuta, AdifKind::kYesNo},
    {"comment", column::kQra},
    {"freq", column::kFrequenza, AdifKind::kFrequency},
    {"qsl_via", column::kManager},
};

std::string TextOf(const engine::Value& value, AdifKind kind) {
  if (kind == AdifKind::kYesNo) return value.ReadableBool().value_or(false) ? "Y" : "N";
  if (value.IsNull()) return {};
  std::optional<base::DateTime> date;
  if (kind == AdifKind::kDate || kind == AdifKind::kTime) {
    date = value.ReadableDate();
    if (!date) return {};
  }
  switch (kind) {
    case AdifKind::kDate:
      return fmt::format(FMT_COMPILE("{:04}{:02}{:02}"), date->Year(), date->Month(), date->Day());
    case AdifKind::kTime:
      return fmt::format(FMT_COMPILE("{:02}{:02}"), date->Hour(), date->Minute());
    case AdifKind::kFrequency:
      return base::Trim(base::FormatNumber(value.Number(), "####.000"));
    case AdifKind::kText:
    case AdifKind::kYesNo:
      break;
  }
  const auto* text = std::get_if<std::string>(&value.Get());
  return base::ToWindows1252(text == nullptr ? value.Text() : *text);
}

}  // namespace

AdifWriter::AdifWriter(engine::Recordset& contacts) : contacts_(contacts) {
  const auto& columns = contacts.Columns();
  for (const AdifTag& tag : kTags) {
    const auto at = std::find(columns.begin(), columns.end(), tag.column);
    places_.push_back(static_cast<std::size_t>(at - columns.begin()));
  }
}

const std::string& AdifWriter::Contact() {
  lines_.clear();
  for (std::size_t i = 0; i < std::size(kTags); ++i) {
    const AdifTag& tag = kTags[i];
    const engine::Value value = contacts_.Field(places_[i]);
    if (tag.kind == AdifKind::kDate && !value.ReadableDate()) ++undated_;
    const std::string text = TextOf(value, tag.kind);
    lines_ += '<';
    lines_ += tag.name;
    lines_ += ':';
    lines_ += fmt::format_int(text.size()).c_str();
    if (tag.kind == AdifKind::kDate) lines_ += ":d";
    lines_ += '>';
    lines_ += text;
    lines_ += " \r\n";
  }
  return lines_ += "<eor>\r\n";
}

}  // namespace brenvo::log
