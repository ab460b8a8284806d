#include "change_column.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/match.h"
#include "base/number.h"
#include "base/text.h"
#include "contact_columns.h"
#include "core/history.h"
#include "core/long_run.h"
#include "core/quoted.h"
#include "core/transaction.h"

namespace brenvo::list {
namespace {

// Numbers that one statement names.
constexpr std::size_t kKeysAStatement = 1000;

std::optional<double> NumberOf(std::string_view text) {
  std::string plain = base::Trim(text);
  std::replace(plain.begin(), plain.end(), ',', '.');
  if (plain.empty()) return 0;
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  return number;
}

// A value as a statement writes it.
std::string Literal(const engine::Value& value) {
  return std::visit(
      base::Match{[](std::monostate) { return std::string("Null"); },
                  [](std::int64_t number) { return std::to_string(number); },
                  [](double number) { return base::PlainNumber(number); },
                  [](const std::string& text) { return core::Quoted(text); },
                  [](base::DateTime date) { return core::Quoted(base::IsoText(date)); },
                  [](bool yes) { return std::string(yes ? "True" : "False"); }},
      value.Get());
}

}  // namespace

NewValue ParseValue(const core::LogColumn& column, std::string_view text) {
  core::LogContact contact;
  contact.DataQso = base::DateTime::Of(2000, 1, 1);
  NewValue parsed;
  std::visit(
      base::Match{[&](base::DateTime core::LogContact::*member) {
                    const auto date = base::ParseDate(base::Trim(text));
                    if (!date) parsed.fault = "Scrivere data e ora: 03/02/2001 10:15";
                    contact.*member = date.value_or(contact.*member);
                    parsed.value = contact.*member;
                  },
                  [&](std::string core::LogContact::*member) {
                    contact.*member = text;
                    if (column.name == core::column::kCall)
                      contact.*member = base::Upper(base::Trim(text));
                    if (column.name == core::column::kCall && contact.Call.empty()) {
                      parsed.fault = "Un contatto ha sempre un nominativo";
                    }
                    parsed.value = contact.*member;
                  },
                  [&](double core::LogContact::*member) {
                    const auto number = NumberOf(text);
                    const bool isWhole = member != &core::LogContact::Frequenza;
                    if (!number || (isWhole && *number != base::Val(base::PlainNumber(
                                                              std::trunc(number.value_or(0)))))) {
                      parsed.fault = isWhole ? "Scrivere un numero intero" : "Scrivere un numero";
                      return;
                    }
                    contact.*member = *number;
                    if (isWhole) {
                      if (core::ColumnTooSmall(contact) == nullptr) {
                        parsed.value = static_cast<std::int64_t>(*number);
                      }
                    } else {
                      parsed.value = *number;
                    }
                  },
                  [&](bool core::LogContact::*member) {
                    const std::string word = core::Folded(base::Trim(text));
                    if (word != "si" && word != "no") parsed.fault = "Scrivere sì o no";
                    contact.*member = word == "si";
                    parsed.value = contact.*member;
                  }},
      column.member);
  if (parsed.fault.empty() && core::ColumnTooSmall(contact) != nullptr) {
    parsed.fault = "La colonna non può contenere questo valore";
  }
  parsed.shown = ShownText(contact, column);
  return parsed;
}

Changed ChangeColumn(core::Session& session, std::string_view title,
                     const std::vector<std::int64_t>& keys, const core::LogColumn& column,
                     const engine::Value& value) {
  bool repeats = false;
  const std::string set = fmt::format("UPDATE Log SET [{}]={}", column.name, Literal(value));
  const auto statements = [&] {
    core::Transaction transaction(session);
    for (std::size_t from = 0; from < keys.size(); from += kKeysAStatement) {
      std::string where = " WHERE QsoNr in (";
      const std::size_t to = std::min(from + kKeysAStatement, keys.size());
      for (std::size_t i = from; i < to; ++i) {
        where += fmt::format("{}{}", i == from ? "" : ",", keys[i]);
      }
      where += ')';
      session.Contacts.Past().KeepWhere(where);
      session.Db.Execute(set + where);
    }
    transaction.Commit();
  };
  const bool all = session.Contacts.ChangeMany(title, {core::ContactTable::kLog}, [&] {
    try {
      return core::RunLongStatements(session, title, "Interrotto: il log è rimasto com'era.",
                                     statements);
    } catch (const engine::DatabaseError& failure) {
      if (failure.Number != engine::DatabaseError::kDuplicateKey) throw;
      repeats = true;
      return false;
    }
  });
  return all ? Changed::kAll : repeats ? Changed::kRepeats : Changed::kStopped;
}

}  // namespace brenvo::list
