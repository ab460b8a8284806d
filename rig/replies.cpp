#include "rig/replies.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.h"

namespace brenvo::rig {
namespace {

constexpr std::string_view kEnd = "RPRT ";
constexpr std::size_t kLongestMode = 12, kMostModels = 2000;

// Codes as the library numbers them, without their sign.
constexpr std::string_view kCodeWords[] = {
    "fatto",           "valore non valido",   "configurazione sbagliata",
    "manca memoria",   "non previsto",        "nessuna risposta dall'apparato",
    "errore di linea", "errore interno",      "protocollo sbagliato",
    "rifiutato",       "risposta tagliata",   "non disponibile",
    "VFO sbagliato",   "errore sul bus",      "bus occupato",
    "valore fuori",    "VFO non valido",      "valore fuori dai limiti",
    "superato",        "negato per prudenza", "apparato spento"};

std::optional<double> ReadNumber(std::string_view text) {
  const std::string trimmed = base::Trim(text);
  double value = 0;
  const char* const end = trimmed.data() + trimmed.size();
  const auto [at, error] = std::from_chars(trimmed.data(), end, value);
  if (error != std::errc() || at != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<int> ReadWhole(std::string_view text) {
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || at != end) return std::nullopt;
  return value;
}

// The first of these that the answer has: older and newer programs word it differently.
std::optional<double> FirstOf(const Reply& reply, std::string_view words, std::string_view name) {
  if (const auto value = reply.Number(words)) return value;
  for (const std::string& line : reply.lines) {
    if (line.starts_with(name) && line.size() > name.size() && line[name.size()] == '=') {
      return ReadNumber(std::string_view(line).substr(name.size() + 1));
    }
  }
  return std::nullopt;
}

}  // namespace

Request Request::WantsVfo() { return {"chk_vfo", "", false, true}; }

Request Request::SetFrequency(base::Hz frequency) {
  return {"set_freq", fmt::format("{:.0f}", frequency.Value())};
}

std::optional<Request> Request::SetMode(std::string_view mode) {
  const bool isName =
      !mode.empty() && mode.size() <= kLongestMode && std::ranges::all_of(mode, [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
      });
  if (!isName) return std::nullopt;
  return Request("set_mode", std::string(mode) + " -1");
}

Request Request::SetPosition(double azimuth, double elevation) {
  return {"set_pos", fmt::format("{:.1f} {:.1f}", azimuth, elevation), false};
}

std::string Request::Bytes(bool namesVfo) const {
  std::string bytes = (bare_ ? "\\" : "+\\") + name_;
  if (namesVfo && ofVfo_) bytes += " currVFO";
  if (!arguments_.empty()) bytes += ' ' + arguments_;
  return bytes + '\n';
}

bool IsUnknown(int code) { return code == -4 || code == -11 || code == -12 || code == -18; }
bool IsDead(int code) {
  return code == -5 || code == -6 || code == -8 || code == -13 || code == -14 || code == -20;
}

std::string WordsOf(int code) {
  const auto at = static_cast<std::size_t>(code > 0 ? code : -static_cast<std::int64_t>(code));
  if (at < std::size(kCodeWords)) return std::string(kCodeWords[at]);
  return fmt::format("errore {}", code);
}

std::optional<std::string> Reply::Find(std::string_view key) const {
  for (const std::string& line : lines) {
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == ':') {
      return base::Trim(std::string_view(line).substr(key.size() + 1));
    }
  }
  return std::nullopt;
}

std::optional<double> Reply::Number(std::string_view key) const {
  const auto text = Find(key);
  return text ? ReadNumber(*text) : std::nullopt;
}

void ReplyReader::Expect(const Request& request) {
  name_ = request.Name();
  bare_ = request.IsBare();
  waits_ = true;
  begun_ = false;
  bytes_ = 0;
  reply_ = {};
  whole_.reset();
  // What stands there already answers something else.
  if (!partial_.empty()) broken_ = true;
}

void ReplyReader::Reset() { *this = ReplyReader(); }

void ReplyReader::Feed(std::string_view bytes) {
  while (!bytes.empty() && !broken_) {
    const std::size_t end = bytes.find('\n');
    partial_ += bytes.substr(0, std::min(end, kLongestLine + 1));
    bytes_ += std::min(end, bytes.size());
    if (partial_.size() > kLongestLine || bytes_ > kMostBytes) {
      broken_ = true;
      break;
    }
    if (end == std::string_view::npos) return;
    bytes.remove_prefix(end + 1);
    std::string line = std::exchange(partial_, {});
    if (line.ends_with('\r')) line.pop_back();
    TakeLine(line);
  }
  if (broken_) partial_.clear();
}

void ReplyReader::TakeLine(std::string_view line) {
  if (!waits_) {
    broken_ = true;
  } else if (bare_) {
    reply_.lines.emplace_back(line);
    whole_ = std::move(reply_);
    waits_ = false;
  } else if (!begun_) {
    begun_ = line.starts_with(name_) && line.size() > name_.size() && line[name_.size()] == ':';
    broken_ = !begun_;
  } else if (line.starts_with(kEnd)) {
    const auto code = ReadWhole(line.substr(kEnd.size()));
    broken_ = !code;
    reply_.code = code.value_or(0);
    whole_ = std::move(reply_);
    waits_ = false;
  } else {
    broken_ = reply_.lines.size() >= kMostLines;
    reply_.lines.emplace_back(line);
  }
}

std::optional<Reply> ReplyReader::Take() {
  if (broken_) return std::nullopt;
  return std::exchange(whole_, std::nullopt);
}

std::optional<bool> ReadWantsVfo(std::string_view line) {
  constexpr std::string_view kWord = "CHKVFO ";
  if (line.starts_with(kWord)) line.remove_prefix(kWord.size());
  if (line == "0") return false;
  if (line == "1") return true;
  return std::nullopt;
}

std::optional<RotatorLimits> ReadLimits(const Reply& state) {
  const auto minAzimuth = FirstOf(state, "Minimum Azimuth", "min_az");
  const auto maxAzimuth = FirstOf(state, "Maximum Azimuth", "max_az");
  if (!minAzimuth || !maxAzimuth || *minAzimuth >= *maxAzimuth) return std::nullopt;
  constexpr double kFurthest = 3600;
  if (*minAzimuth < -kFurthest || *maxAzimuth > kFurthest) return std::nullopt;
  return RotatorLimits{*minAzimuth, *maxAzimuth,
                       FirstOf(state, "Minimum Elevation", "min_el").value_or(0),
                       FirstOf(state, "Maximum Elevation", "max_el").value_or(0)};
}

double DirectionOf(double angle) {
  const double direction = std::fmod(angle, 360);
  return direction < 0 ? direction + 360 : direction;
}

std::optional<double> AngleFor(double direction, double now, const RotatorLimits& limits) {
  std::optional<double> best;
  const double first = DirectionOf(direction);
  const double turns = std::ceil((limits.minAzimuth - first) / 360);
  for (double angle = first + turns * 360; angle <= limits.maxAzimuth; angle += 360) {
    if (!best || std::fabs(angle - now) < std::fabs(*best - now)) best = angle;
  }
  return best;
}

// " 3073  Icom                   IC-7300                 20230109.10     Stable RIG_MODEL_IC7300":
// the headings tell where the columns begin.
std::vector<Model> ReadModels(std::string_view text) {
  std::vector<Model> models;
  std::size_t maker = 0, name = 0, version = 0, state = 0, macro = 0;
  while (!text.empty() && models.size() < kMostModels) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.find('#') != line.npos && line.find(" Mfg") != line.npos) {
      maker = line.find("Mfg");
      name = line.find("Model");
      version = line.find("Version");
      state = line.find("Status");
      macro = std::min(line.find("Macro"), line.size());
      if (name == line.npos || version == line.npos || state == line.npos || maker > name ||
          name > version || version > state || state > macro) {
        maker = 0;
      }
      continue;
    }
    if (maker == 0 || line.size() <= name) continue;
    const auto number = ReadWhole(base::Trim(line.substr(0, maker)));
    if (!number || *number <= 0) continue;
    const auto cut = [&](std::size_t from, std::size_t to) {
      return from >= line.size() ? std::string()
                                 : base::ValidUtf8(base::Trim(line.substr(from, to - from)));
    };
    models.push_back({*number, cut(maker, name), cut(name, version), cut(state, macro)});
  }
  return models;
}

}  // namespace brenvo::rig
