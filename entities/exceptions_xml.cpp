#include <expat.h>
#include <fmt/format.h>

#include <memory>

#include "base/text.h"
#include "entities/read_tables.h"
#include "table_text.h"

// The file of dated exceptions: elements entity, exception, prefix, invalid and zone_exception,
// each with its values in elements of one word.
namespace brenvo::entities {
namespace {

constexpr std::size_t kLongestValue = 200;
constexpr int kDeepest = 8;

// "1972-01-01T00:00:00+00:00", in UTC.
std::optional<base::DateTime> TimeIn(std::string_view text) {
  constexpr std::size_t kTime = 19, kZone = 25;
  if (text.size() == kZone && text.substr(kTime) == "+00:00") {
    text = text.substr(0, kTime);
  } else if (text.size() == kTime + 1 && text.back() == 'Z') {
    text.remove_suffix(1);
  }
  return base::ParseIso(text);
}

struct Values {
  std::string call, adif, name, prefix, cqz, zone, cont, start, end, whitelist, whitelistStart,
      whitelistEnd;

  std::string* Find(std::string_view element) {
    if (element == "call") return &call;
    if (element == "adif") return &adif;
    if (element == "name") return &name;
    if (element == "prefix") return &prefix;
    if (element == "cqz") return &cqz;
    if (element == "zone") return &zone;
    if (element == "cont") return &cont;
    if (element == "start") return &start;
    if (element == "end") return &end;
    if (element == "whitelist") return &whitelist;
    if (element == "whitelist_start") return &whitelistStart;
    if (element == "whitelist_end") return &whitelistEnd;
    return nullptr;
  }
};

class Exceptions {
 public:
  Table Read(std::string_view text) {
    parser_.reset(XML_ParserCreate("UTF-8"));
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), &Began, &Ended);
    XML_SetCharacterDataHandler(parser_.get(), &Text);
    // Entities of its own are all that such a file could do harm by; a sound one has none.
    XML_SetStartDoctypeDeclHandler(parser_.get(), &Declared);
    constexpr std::size_t kPiece = 1 << 20;
    bool last = false;
    while (!last) {
      const std::string_view piece = text.substr(0, kPiece);
      text.remove_prefix(piece.size());
      last = text.empty();
      const XML_Status status =
          XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), last);
      if (!fault_.empty()) Refuse(faultLine_, fault_);
      if (status != XML_STATUS_OK) {
        Refuse(Line(),
               fmt::format("non è XML ({})", XML_ErrorString(XML_GetErrorCode(parser_.get()))));
      }
    }
    if (!isExceptions_) Refuse(1, "non è un elenco di eccezioni");
    table_.format = "cty.xml";
    return std::move(table_);
  }

 private:
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  // A failure must not go through the parser's own frames.
  template <class Work>
  void Guarded(const Work& work) {
    if (!fault_.empty()) return;
    try {
      work();
    } catch (const std::exception& failure) {
      faultLine_ = Line();
      fault_ = failure.what();
      // Those of Refuse tell the line already.
      const std::string told = fmt::format("riga {}: ", faultLine_);
      if (fault_.starts_with(told)) fault_.erase(0, told.size());
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  static std::string_view Local(const XML_Char* name) {
    const std::string_view whole(name);
    return whole.substr(whole.rfind(':') + 1);
  }

  static void Began(void* self, const XML_Char* name, const XML_Char** attributes) {
    auto& me = *static_cast<Exceptions*>(self);
    me.Guarded([&] { me.Begin(Local(name), attributes); });
  }
  static void Ended(void* self, const XML_Char* name) {
    auto& me = *static_cast<Exceptions*>(self);
    me.Guarded([&] { me.End(Local(name)); });
  }
  static void Text(void* self, const XML_Char* text, int length) {
    auto& me = *static_cast<Exceptions*>(self);
    if (me.value_ == nullptr) return;
    me.value_->append(text, static_cast<std::size_t>(length));
    me.Guarded([&] {
      if (me.value_->size() > kLongestValue) Refuse(me.Line(), "un valore troppo lungo");
    });
  }
  static void Declared(void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    auto& me = *static_cast<Exceptions*>(self);
    me.Guarded([&] { Refuse(me.Line(), "dichiara un DOCTYPE, che un tale file non ha"); });
  }

  std::int64_t Line() const {
    return static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get()));
  }

  void Begin(std::string_view name, const XML_Char** attributes) {
    if (++depth_ > kDeepest) Refuse(Line(), "elementi uno nell'altro senza fine");
    if (depth_ == 1) {
      isExceptions_ = name == "clublog";
      if (!isExceptions_) {
        Refuse(Line(),
               fmt::format("comincia con \"{}\", non è un elenco di eccezioni", Shown(name)));
      }
      for (; *attributes != nullptr; attributes += 2) {
        if (std::string_view(attributes[0]) == "date") table_.version = Shown(attributes[1]);
      }
      return;
    }
    if (record_.empty()) {
      if (name == "exception" || name == "prefix" || name == "invalid" ||
          name == "zone_exception" || (name == "entity" && depth_ == 3)) {
        record_ = name;
        recordDepth_ = depth_;
        line_ = Line();
        values_ = {};
      }
      return;
    }
    value_ = depth_ == recordDepth_ + 1 ? values_.Find(name) : nullptr;
    if (value_ != nullptr) value_->clear();
  }

  void End(std::string_view) {
    value_ = nullptr;
    if (!record_.empty() && depth_ == recordDepth_) {
      Take();
      record_.clear();
    }
    --depth_;
  }

  Span When(const std::string& start, const std::string& end) const {
    Span span;
    if (!Trimmed(start).empty()) span.from = Time(start).Seconds();
    if (!Trimmed(end).empty()) {
      const base::DateTime time = Time(end);
      // An end at midnight means that whole day.
      span.to = time.DatePart() == time ? DaysFrom({}, time).to : time.Seconds();
    }
    if (span.from > span.to) Refuse(line_, "finisce prima di cominciare");
    return span;
  }
  base::DateTime Time(const std::string& text) const {
    const auto time = TimeIn(Trimmed(text));
    if (!time) Refuse(line_, fmt::format("\"{}\" non è una data", Shown(text)));
    return *time;
  }

  int Number(const std::string& text, int most) const {
    if (Trimmed(text).empty()) return 0;
    const auto number = WholeNumber(text, 0, most);
    if (!number) Refuse(line_, fmt::format("\"{}\" non è un numero da 0 a {}", Shown(text), most));
    return *number;
  }
  std::string Continent() const {
    const std::string continent = Capitals(Trimmed(values_.cont));
    if (!continent.empty() && !IsContinent(continent)) {
      Refuse(line_, fmt::format("\"{}\" non è un continente", Shown(continent)));
    }
    return continent;
  }

  void Take() {
    const Span when = When(values_.start, values_.end);
    if (record_ == "entity") return TakeEntity(when);
    Rule rule;
    rule.line = line_;
    rule.when = when;
    rule.text = Capitals(Trimmed(values_.call));
    if (record_ == "invalid") {
      rule.kind = RuleKind::kInvalid;
    } else if (record_ == "zone_exception") {
      rule.kind = RuleKind::kZone;
      rule.cq = Number(values_.zone, 40);
    } else {
      rule.kind = record_ == "prefix" ? RuleKind::kPrefix : RuleKind::kCall;
      rule.entity = Number(values_.adif, kLargestNumber);
      rule.cq = Number(values_.cqz, 40);
      rule.continent = Continent();
      if (rule.entity == 0)
        rule.kind = rule.kind == RuleKind::kCall ? RuleKind::kInvalid : rule.kind;
    }
    rules_.Take(std::move(rule));
  }

  void TakeEntity(const Span& when) {
    Entity entity;
    entity.number = Number(values_.adif, kLargestNumber);
    if (entity.number == 0) return;  // ships and aeroplanes, and what counts for nothing
    if (table_.entities.size() == kMostEntities) Refuse(line_, "troppi country");
    entity.name = Shown(values_.name);
    entity.continent = Continent();
    entity.cq = Number(values_.cqz, 40);
    entity.valid = when;
    if (Capitals(Trimmed(values_.whitelist)) == "TRUE") {
      entity.listedOnly = When(values_.whitelistStart, values_.whitelistEnd);
    }
    table_.entities.push_back(std::move(entity));
  }

  std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser_;
  Table table_;
  RuleTaker rules_{table_};
  bool isExceptions_ = false;
  int depth_ = 0, recordDepth_ = 0;
  std::string record_;  // the element that is being read; empty between them
  std::int64_t line_ = 0;
  Values values_;
  std::string* value_ = nullptr;
  std::string fault_;
  std::int64_t faultLine_ = 0;
};

}  // namespace

Table ReadExceptions(std::string_view text) { return Exceptions().Read(text); }

}  // namespace brenvo::entities
