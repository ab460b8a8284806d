#include "conferme/upload.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>

#include "adif/export_keys.h"
#include "base/text.h"
#include "conferme/sending.h"
#include "contact_state.h"
#include "core/stations.h"
#include "questions.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kFile = "\\Inviati.adi";
// Contacts of one question, and of QRZ, which takes one at a time, those that are marked at once.
constexpr std::size_t kTogether = 5000, kMarkedTogether = 100;

// The call stands there as a word of its own.
bool Names(std::string_view words, const std::string& call) {
  const std::string text = base::UpperAscii(words);
  const auto isPart = [&](std::size_t at) {
    const char c = at < text.size() ? text[at] : ' ';
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/';
  };
  for (std::size_t at = text.find(call); at != text.npos; at = text.find(call, at + 1)) {
    if ((at == 0 || !isPart(at - 1)) && !isPart(at + call.size())) return true;
  }
  return false;
}

// The record of a file of one contact, without what stands before and behind it.
std::string RecordIn(std::string_view file) {
  constexpr std::string_view kEndOfHeader = "<EOH>", kEndOfRecord = "<EOR>";
  const std::string capitals = base::UpperAscii(file);
  const std::size_t header = capitals.find(kEndOfHeader);
  const std::size_t from =
      file.find('<', header == capitals.npos ? 0 : header + kEndOfHeader.size());
  const std::size_t to = capitals.rfind(kEndOfRecord);
  if (from == file.npos || to == capitals.npos || to < from) return {};
  return std::string(file.substr(from, to + kEndOfRecord.size() - from));
}

}  // namespace

Upload::Upload(core::Session& session, Addresses addresses)
    : session_(session), addresses_(std::move(addresses)) {}

void Upload::Start(Service service, Ears ears) {
  if (IsAtWork()) return;
  service_ = service;
  ears_ = std::move(ears);
  runs_.clear();
  taken_.clear();
  lastWords_.clear();
  all_ = done_ = sent_ = refused_ = 0;
  std::map<std::string, std::vector<std::int64_t>> byCall;
  for (auto& [station, keys] : ByStation(session_, UnsentTo(session_, service))) {
    auto& ofCall = byCall[base::UpperAscii(base::Trim(station.Call))];
    ofCall.insert(ofCall.end(), keys.begin(), keys.end());
  }
  for (auto& [call, keys] : byCall) {
    std::ranges::sort(keys);
    all_ += std::ssize(keys);
    runs_.push_back({AccountOf(session_, service, call), std::move(keys)});
  }
  const std::string name(FactsOf(service).name);
  if (runs_.empty()) return ears_.ended("Nessun Qso da inviare a " + name);
  web_ = session_.Machine.MakeWebClient();
  web_->OnData = [this](std::string_view bytes) { answer_ += bytes; };
  web_->OnEnd = [this](const platform::WebEnd& end) { Ended(end); };
  Next();
}

void Upload::Next() {
  while (!runs_.empty() && runs_.front().keys.empty()) runs_.pop_front();
  if (runs_.empty()) return Finish("");
  Run& run = runs_.front();
  const std::size_t together = service_ == Service::kQrz ? 1 : kTogether;
  const auto end =
      run.keys.begin() + std::min(std::ssize(run.keys), static_cast<std::ptrdiff_t>(together));
  asked_.assign(run.keys.begin(), end);
  run.keys.erase(run.keys.begin(), end);
  answer_.clear();
  const auto file = session_.File(kFile);
  try {
    adif::ExportKeys(session_, asked_, file, [](std::int64_t) { return true; });
  } catch (const engine::DatabaseError&) {
    throw;
  } catch (const std::runtime_error& failure) {
    return Finish(failure.what());
  }
  std::ifstream in(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  switch (service_) {
    case Service::kEqsl:
      return web_->Ask(SendEqsl(addresses_, run.account, bytes));
    case Service::kQrz: {
      const std::string record = RecordIn(bytes);
      if (record.empty()) return Finish("il Qso non si scrive in un file");
      return web_->Ask(SendQrz(addresses_, run.account, record));
    }
    case Service::kClubLog:
      return web_->Ask(SendClubLog(addresses_, run.account, bytes));
    case Service::kLotw:
      return Finish("LoTW vuole file firmati");
  }
}

void Upload::Ended(const platform::WebEnd& end) {
  const Account account = runs_.front().account;
  const bool answered = service_ == Service::kClubLog && end.failure.empty() && end.status == 403;
  if (!answered) {
    if (const std::string fault = FaultOfStatus(service_, end); !fault.empty()) {
      if (end.failure.empty() && IsLoginStatus(end.status)) web_->Forget(SecretOf(account));
      return Finish(fault);
    }
  }
  const SendOutcome outcome = service_ == Service::kEqsl  ? OutcomeOfEqsl(answer_)
                              : service_ == Service::kQrz ? OutcomeOfQrz(answer_)
                                                          : OutcomeOfClubLog(end.status, answer_);
  if (outcome.login) {
    web_->Forget(SecretOf(account));
    return Finish(outcome.told);
  }
  // One that QRZ refuses holds up no other.
  if (!outcome.taken && service_ != Service::kQrz) return Finish(outcome.told);
  std::vector<Refusal> refused;
  if (!outcome.taken) {
    refused.push_back({asked_.front(), outcome.told});
  } else {
    const std::vector<ContactState> states =
        outcome.wrong.empty() ? std::vector<ContactState>() : StatesOf(session_, asked_);
    for (const std::string& words : outcome.wrong) {
      bool named = false;
      for (std::size_t i = 0; i < states.size(); ++i) {
        if (!states[i].exists || !Names(words, base::UpperAscii(states[i].call))) continue;
        refused.push_back({asked_[i], words});
        named = true;
      }
      // Nobody knows which of them it was: they are sent again.
      if (!named) return Finish(outcome.told + "; " + words);
    }
  }
  for (const std::int64_t key : asked_) {
    if (std::ranges::find(refused, key, &Refusal::qsoNr) == refused.end()) taken_.push_back(key);
  }
  refused_ += std::ssize(refused);
  if (!refused.empty()) KeepRefusals(session_, service_, refused);
  done_ += std::ssize(asked_);
  if (service_ != Service::kQrz) lastWords_ = outcome.told;
  if (service_ != Service::kQrz || taken_.size() >= kMarkedTogether) Mark();
  ears_.progress(done_, all_);
  Next();
}

void Upload::Mark() {
  if (taken_.empty()) return;
  MarkSent(session_, service_, taken_);
  sent_ += std::ssize(taken_);
  taken_.clear();
}

std::string Upload::Told(const std::string& why) const {
  std::string told = fmt::format("Inviati a {}: {} Qso", FactsOf(service_).name, sent_);
  if (refused_ > 0) told += fmt::format(", rifiutati {}", refused_);
  if (all_ > done_) told += fmt::format(", restano {}", all_ - done_);
  if (!lastWords_.empty()) told += "; " + lastWords_;
  if (!why.empty()) told += "; " + why;
  return told;
}

std::string Upload::Stop() {
  if (web_ == nullptr) return {};
  web_->Stop();
  web_.reset();
  runs_.clear();
  Mark();
  return Told("interrotto");
}

void Upload::Finish(const std::string& why) {
  const auto ended = ears_.ended;
  Stop();
  ended(Told(why));
}

}  // namespace brenvo::conferme
