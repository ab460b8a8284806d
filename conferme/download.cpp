#include "conferme/download.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "core/own_values.h"
#include "questions.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kPart = ".parte";
// Services count days from other hours than ours, and what comes late on a day is told of the next.
constexpr int kOverlap = 2;

struct ServiceFiles {
  Service service;
  std::string_view file, mark, accepted;
};
constexpr ServiceFiles kFiles[] = {
    {Service::kLotw, "LoTW", "Conferme LoTW", "Accolti LoTW"},
    {Service::kEqsl, "eQSL", "Conferme eQSL", ""},
    {Service::kQrz, "QRZ", "Conferme QRZ", ""},
    {Service::kClubLog, "ClubLog", "Conferme Club Log", ""},
};
const ServiceFiles& FilesOf(Service service) { return kFiles[static_cast<std::size_t>(service)]; }

std::int64_t LogIdOf(const ReportRecord& record) {
  constexpr std::string_view kName = "LOGID ";
  std::int64_t number = 0;
  if (!record.id.starts_with(kName)) return 0;
  std::from_chars(record.id.data() + kName.size(), record.id.data() + record.id.size(), number);
  return number;
}

}  // namespace

Download::Download(core::Session& session, Addresses addresses)
    : session_(session), addresses_(std::move(addresses)) {}

void Download::Start(const Account& account, Ears ears) {
  if (IsAtWork()) return;
  account_ = account;
  ears_ = std::move(ears);
  records_.reset();
  ids_.clear();
  lastLogId_ = 0;
  until_.clear();
  web_ = session_.Machine.MakeWebClient();
  web_->OnData = [this](std::string_view bytes) { Came(bytes); };
  web_->OnEnd = [this](const platform::WebEnd& end) { Ended(end); };
  switch (account.service) {
    case Service::kLotw:
      return Ask(Step::kConfirmed);
    case Service::kEqsl:
      return Ask(Step::kPage);
    case Service::kQrz:
      return Ask(Step::kRecords);
    case Service::kClubLog:
      return Ask(Step::kMatches);
  }
}

void Download::Stop() {
  if (web_ == nullptr) return;
  // Those who are called by it may stop it: it goes when they are through.
  web_->Stop();
  web_.reset();
  out_.close();
  std::error_code ignored;
  std::filesystem::remove(file_.string() + std::string(kPart), ignored);
}

std::string Download::Since(std::string_view mark) const {
  return core::OwnValue(session_.Db, mark).value_or("");
}

void Download::Ask(Step step) {
  step_ = step;
  const ServiceFiles& files = FilesOf(account_.service);
  page_.clear();
  bytes_ = 0;
  platform::WebQuestion question;
  switch (step) {
    case Step::kConfirmed:
      question = AskLotw(addresses_, account_, true, Since(files.mark));
      break;
    case Step::kAccepted:
      question = AskLotw(addresses_, account_, false, Since(files.accepted));
      break;
    case Step::kPage:
      question = AskEqslInbox(addresses_, account_, DaysBefore(Since(files.mark), kOverlap));
      break;
    case Step::kFile:
      question = AskFile(fileAddress_);
      break;
    case Step::kRecords:
      question = AskQrz(addresses_, account_, DaysBefore(Since(files.mark), kOverlap), lastLogId_);
      break;
    case Step::kMatches:
      question = AskClubLog(addresses_, account_, DaysBefore(Since(files.mark), kOverlap));
      break;
  }
  if (step != Step::kPage) {
    file_ = session_.File(fmt::format("\\{}.scaricato", files.file));
    out_.open(file_.string() + std::string(kPart), std::ios::binary | std::ios::trunc);
    if (!out_) return Finish(fmt::format("{} non si scrive", file_.filename().string()));
  }
  web_->Ask(question);
}

void Download::Came(std::string_view bytes) {
  bytes_ += std::ssize(bytes);
  if (step_ == Step::kPage) {
    page_ += bytes;
  } else {
    out_.write(bytes.data(), std::ssize(bytes));
  }
  ears_.progress(bytes_);
}

void Download::Ended(const platform::WebEnd& end) {
  const bool written = step_ == Step::kPage || (out_.flush() && out_.good());
  out_.close();
  if (const std::string fault = FaultOfStatus(account_.service, end); !fault.empty()) {
    if (end.failure.empty() && IsLoginStatus(end.status)) ForgetSecret();
    return Finish(fault);
  }
  const auto date = end.headers.find("date");
  const std::string until = date == end.headers.end() ? std::string() : DayOfHeader(date->second);
  try {
    if (step_ == Step::kPage) {
      until_ = until;
      return TakePage();
    }
    std::error_code error;
    if (written) std::filesystem::rename(file_.string() + std::string(kPart), file_, error);
    if (!written || error) {
      return Finish(fmt::format("{} non si scrive", file_.filename().string()));
    }
    const ServiceFiles& files = FilesOf(account_.service);
    const std::string title = fmt::format("Conferme di {}", FactsOf(account_.service).name);
    switch (step_) {
      case Step::kConfirmed:
        return Hand({title, file_, std::nullopt, std::string(files.mark), "", false},
                    Step::kAccepted);
      case Step::kAccepted:
        return Hand({fmt::format("Accolti da {}", FactsOf(account_.service).name), file_,
                     std::nullopt, std::string(files.accepted), "", true},
                    std::nullopt);
      case Step::kFile:
        return Hand({title, file_, std::nullopt, std::string(files.mark), until_, false},
                    std::nullopt);
      case Step::kMatches:
        return Hand({title, file_, std::nullopt, std::string(files.mark), until, false},
                    std::nullopt);
      default:
        return TakeRecords(until);
    }
  } catch (const LoginError& failure) {
    ForgetSecret();
    Finish(failure.what());
  } catch (const ReportError& failure) {
    Finish(failure.what());
  }
}

void Download::TakePage() {
  const auto file = FileOfInbox(page_, addresses_.eqsl);
  if (!file) return Finish("");
  fileAddress_ = *file;
  Ask(Step::kFile);
}

void Download::TakeRecords(const std::string& until) {
  std::optional<Report> page = ReadReportFile(file_);
  if (until_.empty()) until_ = until;  // what changes while we ask is told next time
  bool isNew = false;
  if (!records_) {
    records_ = Report();
    records_->kind = ReportKind::kQrz;
  }
  Report& all = *records_;
  for (ReportRecord& record : page->records) {
    lastLogId_ = std::max(lastLogId_, LogIdOf(record));
    if (!ids_.insert(record.id).second) continue;
    isNew = true;
    ++all.read;
    if (all.records.size() == kMostRecords) {
      return Finish(
          fmt::format("Il logbook ha più di {} record: leggerlo da un file", kMostRecords));
    }
    all.records.push_back(std::move(record));
  }
  all.read += page->faulty + page->silent;
  all.faulty += page->faulty;
  all.silent += page->silent;
  for (std::string& fault : page->faults) {
    if (all.faults.size() < kMostFaults) all.faults.push_back(std::move(fault));
  }
  if (isNew && page->read >= kQrzPage) return Ask(Step::kRecords);
  Hand({fmt::format("Conferme di {}", FactsOf(Service::kQrz).name),
        {},
        std::move(records_),
        std::string(FilesOf(Service::kQrz).mark),
        until_,
        false},
       std::nullopt);
}

void Download::Hand(Downloaded downloaded, std::optional<Step> next) {
  const auto got = ears_.got;
  const bool goOn = got(downloaded);
  if (!IsAtWork()) return;
  if (!goOn || !next) return Finish("");
  Ask(*next);
}

void Download::ForgetSecret() {
  if (web_ == nullptr) return;
  web_->Forget(SecretOf(account_));
  // Which of the two it was Club Log does not say.
  if (account_.service == Service::kClubLog) web_->Forget(kClubLogKey);
}

void Download::Finish(const std::string& failure) {
  const auto ended = ears_.ended;
  Stop();
  ended(failure);
}

}  // namespace brenvo::conferme
