// What the window asks of the services, and sends them.
#include <fmt/format.h>

#include <stdexcept>

#include "conferme/conferme.h"
#include "core/log_time.h"
#include "window_words.h"

namespace brenvo::conferme {
namespace {

// eQSL wants so many seconds between two questions.
constexpr std::int64_t kEqslPause = 10;

}  // namespace

const ServiceFacts& Conferme::ChosenService() const {
  return Services()[static_cast<std::size_t>(Servizio.ListIndex() - 1)];
}

void Conferme::FetchReport() {
  const Service service = ChosenService().service;
  const Account account = AccountOf(session_, service);
  if (account.user.empty() || account.call.empty()) {
    return Say(service == Service::kClubLog
                   ? "Scrivere in Preferenze la posta elettronica di Club Log"
                   : "La stazione corrente non ha un nominativo");
  }
  if (!core::AskLogTime(session_)) return;
  if (service == Service::kEqsl) {
    const std::int64_t since = session_.Now().Seconds() - lastAsked_.Seconds();
    if (since >= 0 && since < kEqslPause) {
      return Say(fmt::format("eQSL vuole {} secondi tra una richiesta e l'altra", kEqslPause));
    }
    lastAsked_ = session_.Now();
  }
  const std::string name(FactsOf(service).name);
  Say(fmt::format("{}: si chiedono le conferme... Esc ferma", name));
  asked_ = std::string();
  download_.Start(
      account,
      {.got = [this](const Downloaded& come) { return TakeDownloaded(come); },
       .progress =
           [this, name](std::int64_t bytes) {
             Say(fmt::format("{}: {} KB... Esc ferma", name, Number((bytes + 1023) / 1024)));
           },
       .ended =
           [this, name](const std::string& failure) {
             if (!failure.empty()) {
               CloseExchange(asked_.empty() ? failure : asked_ + "; " + failure);
             } else if (asked_.empty()) {
               CloseExchange(name + ": niente di nuovo");
             } else {
               CloseExchange(asked_);
             }
           }});
}

bool Conferme::TakeDownloaded(const Downloaded& come) {
  const forms::BusyPointer busy(Host());
  try {
    std::optional<Report> report = come.report;
    if (!report) {
      const auto progress =
          session_.Machine.ShowProgress("Lettura del rapporto", SizeOf(come.file));
      report =
          ReadReportFile(come.file, [&](std::int64_t done) { return progress->Advance(done); });
    }
    if (!report) {
      asked_ = kNothingChanged;
      return false;
    }
    const std::string until = !come.until.empty() ? come.until
                              : come.accepted     ? report->lastAccepted
                                                  : report->lastConfirmed;
    const bool whole = Take(*report, come.file.filename().string(), come.title, {come.mark, until});
    // Both reports of LoTW are told, the first one first.
    asked_ += (asked_.empty() ? "" : "; ") + Avviso.Text();
    return whole;
  } catch (const LoginError& failure) {
    download_.ForgetSecret();
    asked_ = failure.what();
  } catch (const engine::DatabaseError& failure) {
    asked_ = fmt::format("Le conferme non si registrano: {}", failure.Description);
  } catch (const std::runtime_error& failure) {
    asked_ = failure.what();
  }
  return false;
}

void Conferme::SendContacts() {
  const ServiceFacts& facts = ChosenService();
  if (facts.service == Service::kLotw) return SignAndSend();
  const Account account = AccountOf(session_, facts.service);
  if (account.user.empty() || account.call.empty()) {
    return Say(facts.service == Service::kClubLog
                   ? "Scrivere in Preferenze la posta elettronica di Club Log"
                   : "La stazione corrente non ha un nominativo");
  }
  if (!core::AskLogTime(session_)) return;
  const std::string name(facts.name);
  Say(fmt::format("{}: si inviano i Qso... Esc ferma", name));
  upload_.Start(facts.service, {.progress =
                                    [this, name](std::int64_t done, std::int64_t all) {
                                      Say(fmt::format("{}: {} Qso di {}... Esc ferma", name,
                                                      Number(done), Number(all)));
                                    },
                                .ended = [this](const std::string& told) { CloseExchange(told); }});
}

void Conferme::StopExchange() {
  if (download_.IsAtWork()) {
    download_.Stop();
    return CloseExchange("Interrotto: quello che non è finito non cambia nulla");
  }
  CloseExchange(upload_.Stop());
}

// The keys of the tool bar follow.
void Conferme::CloseExchange(const std::string& said) {
  Renew();
  Say(said);
}

}  // namespace brenvo::conferme
