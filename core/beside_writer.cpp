#include "core/beside_writer.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "core/history.h"
#include "core/quoted.h"

namespace brenvo::core {

void BesideWriter::SetField(std::int64_t qsoNr, std::string_view field,
                            const std::optional<std::string>& before,
                            const std::optional<std::string>& after) {
  const auto [at, isNew] =
      fields_.try_emplace({qsoNr, std::string(field)}, Change<std::string>{before, after});
  if (!isNew) at->second.after = after;
  touched_.insert(qsoNr);
}

void BesideWriter::SetConfirmation(std::int64_t qsoNr, const std::string& service,
                                   const std::optional<Confirmation>& before,
                                   const std::optional<Confirmation>& after) {
  const auto [at, isNew] =
      confirmations_.try_emplace({qsoNr, service}, Change<Confirmation>{before, after});
  if (!isNew) at->second.after = after;
  touched_.insert(qsoNr);
}

void BesideWriter::KeepInHistory() {
  History& past = session_.Contacts.Past();
  if (contacts_ == Contacts::kToBeKept) past.KeepAll({touched_.begin(), touched_.end()});
  for (const auto& [key, change] : fields_) {
    past.KeepBeside(key.first, key.second,
                    change.before ? engine::Value(*change.before) : engine::Value());
  }
  for (const auto& [key, change] : confirmations_) {
    past.KeepBeside(
        key.first, History::ConfirmationField(key.second),
        change.before ? engine::Value(TextOfConfirmation(*change.before)) : engine::Value());
  }
}

template <class Told>
void BesideWriter::Drop(const Changes<Told>& changes, std::string_view table,
                        std::string_view column) {
  std::map<std::string_view, std::vector<std::int64_t>> gone;
  for (const auto& [key, change] : changes) {
    if (change.before) gone[key.second].push_back(key.first);
  }
  for (const auto& [name, keys] : gone) {
    session_.Db.Execute(fmt::format("delete * from {} where {}={} and QsoNr in ({})", table, column,
                                    Quoted(name), fmt::join(keys, ",")));
  }
}

void BesideWriter::Write() {
  if (touched_.empty()) return;
  KeepInHistory();
  Drop(fields_, "LogAdif", "Campo");
  Drop(confirmations_, "LogConferme", "Servizio");
  for (const auto& [key, change] : fields_) {
    if (!change.after) continue;
    if (fieldRows_ == nullptr) fieldRows_ = session_.Db.OpenAppender("LogAdif");
    fieldRows_->Append({key.first, key.second, *change.after});
  }
  for (const auto& [key, change] : confirmations_) {
    if (!change.after) continue;
    if (confirmationRows_ == nullptr) confirmationRows_ = session_.Db.OpenAppender("LogConferme");
    confirmationRows_->Append(RowOfConfirmation(key.first, key.second, *change.after));
  }
  touched_.clear();
  fields_.clear();
  confirmations_.clear();
}

}  // namespace brenvo::core
