// Reads rules that an operator may write himself, from a JSON text: what is wrong is told by line
// and field, and what nobody has asked for is wrong too.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/json_tree.h"

namespace brenvo::base {

// For the operator: "riga 12, punti.tipo: ...".
struct FieldFault {
  int line = 0;
  std::string field;  // "punti.tipo"; empty for the file as a whole
  std::string what;
  std::string Text() const;
};

template <class Value>
struct Word {
  std::string_view word;
  Value value;
};

// One object of the file. What is asked for and is not there, or is of another kind, is a fault and
// gives what stands for it otherwise; at the end, what was never asked for is a fault.
class JsonFields {
 public:
  // All of them live longer. `path` is where the object stands: "punti", empty for the file.
  JsonFields(const Json& json, std::string path, std::vector<FieldFault>& faults);
  ~JsonFields();
  JsonFields(const JsonFields&) = delete;
  JsonFields& operator=(const JsonFields&) = delete;

  int Line() const { return json_.line; }
  std::string PathOf(std::string_view name) const;
  void Fault(int line, std::string field, std::string what);
  void FaultAt(std::string_view name, std::string what);
  std::vector<FieldFault>& Faults() { return faults_; }

  // Null where it is not there.
  const Json* Find(std::string_view name);
  bool Has(std::string_view name) { return Find(name) != nullptr; }

  // On one line, without blanks around.
  std::string Text(std::string_view name, bool mustBe = true, std::size_t longest = 300);
  double Number(std::string_view name, double otherwise, double least, double most,
                bool mustBe = false);
  int Whole(std::string_view name, int otherwise, int least, int most, bool mustBe = false);
  bool YesNo(std::string_view name, bool otherwise);
  template <class Value, std::size_t n>
  Value OneOf(std::string_view name, const Word<Value> (&words)[n], Value otherwise,
              bool mustBe = true) {
    const Json* const at = Get(name, mustBe, Json::Kind::kText, "un testo fra virgolette");
    if (at == nullptr) return otherwise;
    for (const Word<Value>& word : words) {
      if (word.word == at->text) return word.value;
    }
    std::string all;
    for (const Word<Value>& word : words) {
      all += fmt::format("{}\"{}\"", all.empty() ? "" : ", ", word.word);
    }
    FaultAt(name, fmt::format("\"{}\" non c'è: si scrive {}", at->text, all));
    return otherwise;
  }
  // "14:00" as minutes; up to 24:00.
  int Minutes(std::string_view name, int otherwise, bool mustBe = true);
  std::span<const Json> List(std::string_view name, bool mustBe = true, std::size_t most = 500);
  std::vector<std::string> Texts(std::string_view name, bool mustBe = true);

 protected:
  const Json* Get(std::string_view name, bool mustBe, Json::Kind kind, std::string_view what);

 private:
  const Json& json_;
  std::string path_;
  std::vector<FieldFault>& faults_;
  std::set<std::string, std::less<>> asked_;
};

// Each object of a list, as `Fields` and by its number from 1.
template <class Fields, class Read>
void EachObject(Fields& fields, std::string_view name, bool mustBe, const Read& read) {
  int number = 0;
  for (const Json& item : fields.List(name, mustBe)) {
    Fields one(item, fmt::format("{}[{}]", fields.PathOf(name), ++number), fields.Faults());
    read(one);
  }
}

}  // namespace brenvo::base
