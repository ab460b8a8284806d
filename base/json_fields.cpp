#include "base/json_fields.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace brenvo::base {

std::string FieldFault::Text() const {
  if (line == 0) return field.empty() ? what : fmt::format("{}: {}", field, what);
  return field.empty() ? fmt::format("riga {}: {}", line, what)
                       : fmt::format("riga {}, {}: {}", line, field, what);
}

JsonFields::JsonFields(const Json& json, std::string path, std::vector<FieldFault>& faults)
    : json_(json), path_(std::move(path)), faults_(faults) {
  if (json_.kind != Json::Kind::kObject) Fault(json_.line, path_, "qui ci vuole { ... }");
}

JsonFields::~JsonFields() {
  for (const auto& [name, member] : json_.members) {
    if (!asked_.contains(name)) Fault(member.line, PathOf(name), "campo sconosciuto");
  }
}

std::string JsonFields::PathOf(std::string_view name) const {
  return path_.empty() ? std::string(name) : fmt::format("{}.{}", path_, name);
}

void JsonFields::Fault(int line, std::string field, std::string what) {
  faults_.push_back({line, std::move(field), std::move(what)});
}

void JsonFields::FaultAt(std::string_view name, std::string what) {
  const Json* const at = Find(name);
  Fault(at == nullptr ? json_.line : at->line, PathOf(name), std::move(what));
}

const Json* JsonFields::Find(std::string_view name) {
  asked_.insert(std::string(name));
  for (const auto& [key, member] : json_.members) {
    if (key == name) return &member;
  }
  return nullptr;
}

std::string JsonFields::Text(std::string_view name, bool mustBe, std::size_t longest) {
  const Json* const at = Get(name, mustBe, Json::Kind::kText, "un testo fra virgolette");
  if (at == nullptr) return {};
  if (base::Len(at->text) > longest) {
    FaultAt(name, fmt::format("più di {} lettere", longest));
    return {};
  }
  if (std::ranges::any_of(at->text, [](char c) { return static_cast<unsigned char>(c) < ' '; })) {
    FaultAt(name, "un testo sta su una riga sola");
  }
  if (mustBe && base::Trim(at->text).empty()) FaultAt(name, "è vuoto");
  return base::Trim(at->text);
}

double JsonFields::Number(std::string_view name, double otherwise, double least, double most,
                          bool mustBe) {
  const Json* const at = Get(name, mustBe, Json::Kind::kNumber, "un numero");
  if (at == nullptr) return otherwise;
  if (!(at->number >= least && at->number <= most)) {
    FaultAt(name, fmt::format("va da {} a {}", least, most));
    return otherwise;
  }
  return at->number;
}

int JsonFields::Whole(std::string_view name, int otherwise, int least, int most, bool mustBe) {
  const double number = Number(name, otherwise, least, most, mustBe);
  if (number != std::floor(number)) FaultAt(name, "ci vuole un numero intero");
  return static_cast<int>(number);
}

bool JsonFields::YesNo(std::string_view name, bool otherwise) {
  const Json* const at = Get(name, false, Json::Kind::kYesNo, "true o false");
  return at == nullptr ? otherwise : at->yes;
}

int JsonFields::Minutes(std::string_view name, int otherwise, bool mustBe) {
  const std::string text = Text(name, mustBe);
  if (text.empty()) return otherwise;
  const bool isTime = text.size() == 5 && text[2] == ':' && std::ranges::all_of(text, [](char c) {
                        return (c >= '0' && c <= '9') || c == ':';
                      });
  const int hours = isTime ? (text[0] - '0') * 10 + text[1] - '0' : 99;
  const int minutes = isTime ? (text[3] - '0') * 10 + text[4] - '0' : 99;
  if (hours > 24 || minutes > 59 || hours * 60 + minutes > 24 * 60) {
    FaultAt(name, "l'ora si scrive come 14:00");
    return otherwise;
  }
  return hours * 60 + minutes;
}

std::span<const Json> JsonFields::List(std::string_view name, bool mustBe, std::size_t most) {
  const Json* const at = Get(name, mustBe, Json::Kind::kList, "un elenco [ ... ]");
  if (at == nullptr) return {};
  if (mustBe && at->items.empty()) FaultAt(name, "l'elenco è vuoto");
  if (at->items.size() > most) {
    FaultAt(name, fmt::format("più di {} voci", most));
    return {};
  }
  return at->items;
}

std::vector<std::string> JsonFields::Texts(std::string_view name, bool mustBe) {
  std::vector<std::string> texts;
  for (const Json& item : List(name, mustBe)) {
    if (item.kind != Json::Kind::kText || item.text.empty() || base::Len(item.text) > 300) {
      Fault(item.line, PathOf(name), "qui ci vogliono testi fra virgolette");
      continue;
    }
    texts.push_back(item.text);
  }
  return texts;
}

const Json* JsonFields::Get(std::string_view name, bool mustBe, Json::Kind kind,
                            std::string_view what) {
  const Json* const at = Find(name);
  if (at == nullptr) {
    if (mustBe) Fault(json_.line, PathOf(name), "manca");
    return nullptr;
  }
  if (at->kind != kind) {
    FaultAt(name, fmt::format("qui ci vuole {}", what));
    return nullptr;
  }
  return at;
}

}  // namespace brenvo::base
