#include "base/json_tree.h"

#include <fmt/format.h>

#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

namespace brenvo::base {
namespace {

constexpr std::size_t kMostMembers = 200;  // of one object

// The line of the last sign read that is no blank: the parser looks one sign beyond a number.
struct Place {
  int line = 1, ofSign = 1;
};

class CountingBytes {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingBytes(const char* at, Place* place) : at_(at), place_(place) {}
  reference operator*() const { return *at_; }
  CountingBytes& operator++() {
    if (*at_ == '\n') {
      ++place_->line;
    } else if (*at_ != ' ' && *at_ != '\t' && *at_ != '\r') {
      place_->ofSign = place_->line;
    }
    ++at_;
    return *this;
  }
  CountingBytes operator++(int) {
    CountingBytes before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountingBytes& other) const { return at_ == other.at_; }
  bool operator!=(const CountingBytes& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  Place* place_;
};

class Builder : public nlohmann::json_sax<nlohmann::json> {
 public:
  Builder(const Place& place, const JsonBounds& bounds) : place_(place), bounds_(bounds) {}

  bool null() override { return Put(Json::Kind::kNull) != nullptr; }
  bool boolean(bool value) override {
    Json* const made = Put(Json::Kind::kYesNo);
    if (made != nullptr) made->yes = value;
    return made != nullptr;
  }
  bool number_integer(number_integer_t value) override {
    return PutNumber(static_cast<double>(value));
  }
  bool number_unsigned(number_unsigned_t value) override {
    return PutNumber(static_cast<double>(value));
  }
  bool number_float(number_float_t value, const string_t&) override { return PutNumber(value); }
  bool string(string_t& value) override {
    Json* const made = Put(Json::Kind::kText);
    if (made != nullptr) made->text = std::move(value);
    return made != nullptr;
  }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return Open(Json::Kind::kObject); }
  bool end_object() override { return Close(); }
  bool start_array(std::size_t) override { return Open(Json::Kind::kList); }
  bool end_array() override { return Close(); }
  bool key(string_t& value) override {
    if (open_.back()->members.size() >= kMostMembers) {
      return Fail(fmt::format("troppi campi, più di {}", kMostMembers));
    }
    for (const auto& [name, member] : open_.back()->members) {
      if (name == value)
        return Fail(fmt::format("\"{}\" c'è già alla riga {}", value, member.line));
    }
    key_ = std::move(value);
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override {
    return Fail("il testo non è JSON: manca o avanza un segno, o una lettera non è UTF-8");
  }

  Json root;
  std::optional<JsonFault> fault;

 private:
  bool Fail(std::string what) {
    if (!fault) fault = JsonFault{place_.ofSign, std::move(what)};
    return false;
  }
  bool PutNumber(double value) {
    Json* const made = Put(Json::Kind::kNumber);
    if (made != nullptr) made->number = value;
    return made != nullptr;
  }
  // Lists grow while none of their items is open: what points at an open one stays.
  Json* Put(Json::Kind kind) {
    if (++values_ > bounds_.values) {
      Fail(fmt::format("troppi valori, più di {}", bounds_.values));
      return nullptr;
    }
    Json* made = &root;
    if (!open_.empty()) {
      Json& within = *open_.back();
      made = within.kind == Json::Kind::kList
                 ? &within.items.emplace_back()
                 : &within.members.emplace_back(JsonMember{std::move(key_), Json()}).value;
    }
    made->kind = kind;
    made->line = place_.ofSign;
    return made;
  }
  bool Open(Json::Kind kind) {
    if (static_cast<int>(open_.size()) >= bounds_.depth) {
      return Fail(fmt::format("troppe parentesi l'una nell'altra, più di {}", bounds_.depth));
    }
    Json* const made = Put(kind);
    if (made == nullptr) return false;
    open_.push_back(made);
    return true;
  }
  bool Close() {
    open_.pop_back();
    return true;
  }

  const Place& place_;
  const JsonBounds& bounds_;
  std::vector<Json*> open_;
  std::string key_;
  std::size_t values_ = 0;
};

}  // namespace

ReadJson ReadJsonText(std::string_view bytes, const JsonBounds& bounds) {
  if (bytes.size() > bounds.bytes) {
    return {{}, JsonFault{0, fmt::format("il file è più lungo di {} byte", bounds.bytes)}};
  }
  Place place;
  Builder builder(place, bounds);
  const bool whole =
      nlohmann::json::sax_parse(CountingBytes(bytes.data(), &place),
                                CountingBytes(bytes.data() + bytes.size(), &place), &builder);
  if (!whole && !builder.fault) builder.fault = JsonFault{place.ofSign, "il testo non è JSON"};
  return {std::move(builder.root), std::move(builder.fault)};
}

}  // namespace brenvo::base
