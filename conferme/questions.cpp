#include "questions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/date.h"
#include "base/text.h"
#include "conferme/report.h"

namespace brenvo::conferme {
namespace {

using platform::WebForm;
using platform::WebQuestion;

constexpr int kMinute = 60'000;
constexpr std::size_t kMegabyte = std::size_t{1} << 20;
// LoTW makes large reports while one waits.
constexpr int kLotwLimit = 30 * kMinute, kLotwPatience = 10 * kMinute;
constexpr int kLimit = 10 * kMinute, kPatience = 2 * kMinute;
constexpr std::size_t kLargestReport = 512 * kMegabyte, kLargestPage = 2 * kMegabyte;
constexpr std::size_t kMostWords = 150;

// A text of a service on one line of a screen, without markup.
std::string Words(std::string_view text) {
  std::string words;
  bool inTag = false;
  for (const char c : base::ValidUtf8(text)) {
    if (c == '<') inTag = true;
    if (!inTag) words += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    if (c == '>') inTag = false;
  }
  return base::Left(base::Trim(words), kMostWords);
}

bool Holds(std::string_view text, std::string_view what) {
  return base::UpperAscii(text).find(base::UpperAscii(what)) != std::string::npos;
}

// The words from there to the end of the line or of the paragraph.
std::string_view LineAt(std::string_view text, std::size_t at) {
  text.remove_prefix(at);
  return text.substr(0, text.find_first_of("\r\n<"));
}

bool IsPlainPath(std::string_view path) {
  return path.find("..") == path.npos && std::ranges::all_of(path, [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                  c == '/' || c == '.' || c == '-' || c == '_';
         });
}

}  // namespace

WebQuestion AskLotw(const Addresses& addresses, const Account& account, bool confirmed,
                    std::string_view since) {
  // Where nothing is told LoTW begins where it likes.
  const std::string from(since.empty() ? "1945-01-01" : since);
  WebQuestion question{WebForm::kQuery,
                       addresses.lotw + "/lotwuser/lotwreport.adi",
                       {{"login", account.user},
                        {"password", "", SecretOf(account)},
                        {"qso_query", "1"},
                        {"qso_qsl", confirmed ? "yes" : "no"},
                        {confirmed ? "qso_qslsince" : "qso_qsorxsince", from},
                        {"qso_withown", "yes"}}};
  if (confirmed) question.fields.push_back({"qso_qsldetail", "yes"});
  question.limit = kLotwLimit;
  question.patience = kLotwPatience;
  question.most = kLargestReport;
  return question;
}

WebQuestion AskEqslInbox(const Addresses& addresses, const Account& account,
                         std::string_view since) {
  WebQuestion question{WebForm::kQuery,
                       addresses.eqsl + "/qslcard/DownloadInBox.cfm",
                       {{"UserName", account.user}, {"Password", "", SecretOf(account)}}};
  if (!since.empty()) {
    std::string day(since.substr(0, std::string_view("2001-02-03").size()));
    std::erase(day, '-');
    question.fields.push_back({"RcvdSince", day});
  }
  question.limit = kLimit;
  question.patience = kPatience;
  question.most = kLargestPage;
  return question;
}

WebQuestion AskFile(std::string_view address) {
  WebQuestion question{WebForm::kQuery, std::string(address), {}};
  question.limit = kLimit;
  question.patience = kPatience;
  question.most = kLargestReport;
  return question;
}

WebQuestion AskQrz(const Addresses& addresses, const Account& account, std::string_view since,
                   std::int64_t behind) {
  std::string option =
      fmt::format("TYPE:ADIF,STATUS:CONFIRMED,MAX:{},AFTERLOGID:{}", kQrzPage, behind);
  if (!since.empty()) option += fmt::format(",MODSINCE:{}", since);
  WebQuestion question{WebForm::kFields,
                       addresses.qrz + "/api",
                       {{"KEY", "", SecretOf(account)}, {"ACTION", "FETCH"}, {"OPTION", option}}};
  question.patience = kPatience;
  question.limit = kLimit;
  question.most = 64 * kMegabyte;
  return question;
}

WebQuestion AskClubLog(const Addresses& addresses, const Account& account, std::string_view since) {
  WebQuestion question{WebForm::kQuery,
                       addresses.clubLog + "/getmatches.php",
                       {{"api", "", std::string(kClubLogKey)},
                        {"email", account.user},
                        {"password", "", SecretOf(account)},
                        {"callsign", account.call}}};
  if (const auto day = base::ParseIso(since)) {
    question.fields.push_back({"startyear", std::to_string(day->Year())});
    question.fields.push_back({"startmonth", std::to_string(day->Month())});
    question.fields.push_back({"startday", std::to_string(day->Day())});
  }
  question.limit = kLimit;
  question.patience = kPatience;
  question.most = kLargestMatches;
  return question;
}

WebQuestion SendEqsl(const Addresses& addresses, const Account& account, std::string_view file) {
  WebQuestion question{WebForm::kParts,
                       addresses.eqsl + "/qslcard/ImportADIF.cfm",
                       {{"eqsl_user", account.user},
                        {"eqsl_pswd", "", SecretOf(account)},
                        {"Filename", std::string(file), "", "log.adi"}}};
  question.limit = kLimit;
  question.patience = kPatience;
  question.most = 16 * kMegabyte;
  return question;
}

WebQuestion SendQrz(const Addresses& addresses, const Account& account, std::string_view record) {
  return {WebForm::kFields,
          addresses.qrz + "/api",
          {{"KEY", "", SecretOf(account)},
           {"ACTION", "INSERT"},
           {"OPTION", "REPLACE"},
           {"ADIF", std::string(record)}}};
}

WebQuestion SendClubLog(const Addresses& addresses, const Account& account, std::string_view file) {
  WebQuestion question{WebForm::kParts,
                       addresses.clubLog + "/putlogs.php",
                       {{"email", account.user},
                        {"password", "", SecretOf(account)},
                        {"callsign", account.call},
                        {"clear", "0"},
                        {"api", "", std::string(kClubLogKey)},
                        {"file", std::string(file), "", "log.adi"}}};
  question.limit = kLimit;
  question.patience = kPatience;
  return question;
}

std::optional<std::string> FileOfInbox(std::string_view page, std::string_view eqsl) {
  if (Holds(page, "No such Username/Password found") ||
      Holds(page, "Error: No match on eQSL_User")) {
    throw LoginError("eQSL non ha accettato nome o parola d'ordine; nulla è cambiato");
  }
  const std::size_t end = page.find("\">.ADI file");
  if (end == page.npos) {
    if (Holds(page, "You have no log entries")) return std::nullopt;
    throw ReportError("eQSL non ha dato un file: la sua pagina dice altro; nulla è cambiato");
  }
  const std::size_t from = page.rfind('"', end == 0 ? 0 : end - 1);
  std::string_view link =
      from == page.npos ? std::string_view() : page.substr(from + 1, end - from - 1);
  if (link.starts_with(std::string(eqsl) + '/')) link.remove_prefix(eqsl.size());
  // A path of the same host, and nothing else that a page may say.
  while (link.starts_with("../")) link.remove_prefix(std::string_view("../").size());
  if (link.empty() || link.starts_with("//") || !IsPlainPath(link)) {
    throw ReportError("eQSL manda a prendere il file altrove; nulla è cambiato");
  }
  return std::string(eqsl) + (link.front() == '/' ? "" : "/") + std::string(link);
}

SendOutcome OutcomeOfEqsl(std::string_view page) {
  SendOutcome outcome;
  if (Holds(page, "No match on eQSL_User") || Holds(page, "No such Username/Password")) {
    outcome.login = true;
    outcome.told = "eQSL non ha accettato nome o parola d'ordine";
    return outcome;
  }
  std::size_t duplicates = 0;
  for (std::size_t at = page.find("Warning:"); at != page.npos;
       at = page.find("Warning:", at + 1)) {
    const std::string_view line = LineAt(page, at);
    if (!Holds(line, "Bad record")) continue;
    if (Holds(line, "Duplicate")) {
      ++duplicates;  // it has it
    } else {
      outcome.wrong.push_back(Words(line));
    }
  }
  if (const std::size_t at = page.find("Error:"); at != page.npos) {
    outcome.told = Words(LineAt(page, at));
    return outcome;
  }
  const std::size_t at = page.find("Result:");
  if (at == page.npos) {
    outcome.told = "eQSL ha risposto altro";
    return outcome;
  }
  outcome.taken = true;
  outcome.told = Words(LineAt(page, at));
  if (duplicates > 0) outcome.told += fmt::format(", {} che aveva già", duplicates);
  return outcome;
}

SendOutcome OutcomeOfQrz(std::string_view answer) {
  SendOutcome outcome;
  const auto value = [&](std::string_view name) {
    const std::size_t at = answer.find(name);
    if (at == answer.npos || (at > 0 && answer[at - 1] != '&')) return std::string_view();
    const std::string_view rest = answer.substr(at + name.size());
    return rest.substr(0, rest.find_first_of("&\r\n"));
  };
  const std::string_view result = value("RESULT="), reason = value("REASON=");
  // One that it has already, confirmed and not to be replaced, is there.
  outcome.taken = result == "OK" || result == "REPLACE" || Holds(reason, "duplicate");
  outcome.login = result == "AUTH";
  if (outcome.taken) return outcome;
  outcome.told = outcome.login    ? "QRZ non ha accettato la chiave del logbook"
                 : reason.empty() ? "QRZ ha risposto altro"
                                  : "QRZ: " + Words(reason);
  return outcome;
}

SendOutcome OutcomeOfClubLog(int status, std::string_view answer) {
  SendOutcome outcome;
  outcome.taken = status == 200;
  outcome.login = status == 403;
  if (outcome.taken) return outcome;
  outcome.told = "Club Log non li ha presi";
  if (outcome.login)
    outcome.told = "Club Log non ha accettato la stazione, o quel log l'ha già avuto";
  if (const std::string words = Words(answer); !words.empty()) outcome.told += " (" + words + ")";
  return outcome;
}

bool IsLoginStatus(int status) { return status == 401 || status == 403; }

std::string FaultOfStatus(Service service, const platform::WebEnd& end) {
  const std::string_view name = FactsOf(service).name;
  if (!end.failure.empty()) return fmt::format("{}: {}", name, end.failure);
  if (end.status >= 200 && end.status < 300) return {};
  if (IsLoginStatus(end.status)) {
    return fmt::format(
        "{} non ha accettato nome o parola d'ordine ({}); se ha % o # provare a cambiarla", name,
        end.status);
  }
  if (end.status == 429) {
    const auto after = end.headers.find("retry-after");
    const bool known =
        after != end.headers.end() && !after->second.empty() && after->second.size() < 8 &&
        std::ranges::all_of(after->second, [](char c) { return c >= '0' && c <= '9'; });
    return known ? fmt::format("{} chiede di aspettare {} secondi", name, after->second)
                 : fmt::format("{} chiede di aspettare", name);
  }
  if (end.status >= 500)
    return fmt::format("{} ha un guasto ({}): riprovare più tardi", name, end.status);
  return fmt::format("{} ha risposto {}", name, end.status);
}

std::string DayOfHeader(std::string_view date) {
  constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
  // "Sat, 03 Feb 2001 ..."
  if (date.size() < 16 || date[3] != ',' || date[4] != ' ') return {};
  int day = 0, year = 0;
  const auto number = [&](std::size_t at, std::size_t size, int& value) {
    const char* const end = date.data() + at + size;
    const auto [stop, error] = std::from_chars(date.data() + at, end, value);
    return error == std::errc() && stop == end;
  };
  const std::size_t month = kMonths.find(date.substr(8, 3));
  if (month == kMonths.npos || month % 3 != 0 || !number(5, 2, day) || !number(12, 4, year))
    return {};
  const std::string iso = fmt::format("{:04}-{:02}-{:02}", year, month / 3 + 1, day);
  return base::ParseIso(iso) ? iso : std::string();
}

std::string DaysBefore(std::string_view day, int days) {
  const auto at = base::ParseIso(day);
  if (!at) return {};
  constexpr std::int64_t kDay = 24 * 60 * 60;
  return base::IsoText(at->Later(-days * kDay)).substr(0, std::string_view("2001-02-03").size());
}

}  // namespace brenvo::conferme
