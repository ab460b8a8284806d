#include "parser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <string>

#include "base/text.h"
#include "engine/database_error.h"
#include "tokenizer.h"

namespace brenvo::dialect {
namespace {

constexpr std::uint64_t kSelectWord = PackWord("SELECT");
constexpr std::uint64_t kFromWord = PackWord("FROM");
constexpr std::uint64_t kWhereWord = PackWord("WHERE");
constexpr std::uint64_t kByWord = PackWord("BY");
constexpr std::uint64_t kAndWord = PackWord("AND");
constexpr std::uint64_t kOrWord = PackWord("OR");
constexpr std::uint64_t kNotWord = PackWord("NOT");
constexpr std::uint64_t kAsWord = PackWord("AS");
constexpr std::uint64_t kNullWord = PackWord("NULL");
constexpr std::uint64_t kInWord = PackWord("IN");
constexpr std::uint64_t kSetWord = PackWord("SET");
constexpr std::uint64_t kValuesWord = PackWord("VALUES");

// Words that are no names unless they stand in brackets.
constexpr std::uint64_t kReserved[] = {
    kSelectWord,
    kFromWord,
    kWhereWord,
    PackWord("GROUP"),
    kByWord,
    PackWord("HAVING"),
    PackWord("ORDER"),
    PackWord("ASC"),
    PackWord("DESC"),
    kAndWord,
    kOrWord,
    kNotWord,
    PackWord("LIKE"),
    kInWord,
    PackWord("BETWEEN"),
    PackWord("IS"),
    kNullWord,
    kAsWord,
    PackWord("DISTINCT"),
    PackWord("INSERT"),
    PackWord("INTO"),
    kValuesWord,
    PackWord("UPDATE"),
    kSetWord,
    PackWord("DELETE"),
    PackWord("TRUE"),
    PackWord("FALSE"),
    PackWord("EXISTS"),
    PackWord("UNION"),
    PackWord("JOIN"),
};

bool IsReserved(const Token& token) {
  return token.word != 0 &&
         std::find(std::begin(kReserved), std::end(kReserved), token.word) != std::end(kReserved);
}

class Parser {
 public:
  Parser(std::string_view statement, StatementTree& tree)
      : statement_(statement), tree_(tree), tokens_(statement) {
    if (statement.size() > kLongestStatement) {
      throw engine::DatabaseError(engine::DatabaseError::kSyntax, "L'istruzione è troppo lunga.");
    }
    token_ = tokens_.Next();
    next_ = tokens_.Next();
  }

  void Statement() {
    if (IsWord(kSelectWord)) {
      tree_.kind = StatementKind::kSelect;
      tree_.select = Select();
    } else if (TakeWord(PackWord("INSERT"))) {
      Insert();
    } else if (TakeWord(PackWord("UPDATE"))) {
      Update();
    } else if (TakeWord(PackWord("DELETE"))) {
      Delete();
    } else {
      Fail();
    }
    if (Take(";") && token_.kind != TokenKind::kEnd) {
      throw engine::DatabaseError(engine::DatabaseError::kCharactersAfterEnd,
                                  "Caratteri trovati dopo la fine dell'istruzione.");
    }
    if (token_.kind != TokenKind::kEnd) Fail();
  }

  void Condition() {
    tree_.where = Or();
    if (token_.kind != TokenKind::kEnd) Fail();
  }

 private:
  // Counts nested brackets, functions and selects, so that no text can exhaust the stack.
  class Level {
   public:
    explicit Level(Parser& parser) : parser_(parser) {
      if (++parser_.level_ > kDeepestBrackets) parser_.FailDepth();
    }
    ~Level() { --parser_.level_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  [[noreturn]] void Fail() const {
    std::string near = base::Left(
        base::ValidUtf8(statement_.substr(std::min(token_.start, statement_.size()))), 40);
    throw engine::DatabaseError(engine::DatabaseError::kSyntax,
                                near.empty() ? "Errore di sintassi: l'istruzione non è completa."
                                             : "Errore di sintassi presso '" + near + "'.");
  }
  [[noreturn]] void FailDepth() const {
    throw engine::DatabaseError(engine::DatabaseError::kSyntax,
                                "L'espressione è troppo complessa.");
  }

  void Advance() {
    token_ = next_;
    next_ = tokens_.Next();
  }
  bool IsWord(std::uint64_t word) const {
    return token_.kind == TokenKind::kName && token_.word == word;
  }
  bool TakeWord(std::uint64_t word) {
    if (!IsWord(word)) return false;
    Advance();
    return true;
  }
  void ExpectWord(std::uint64_t word) {
    if (!TakeWord(word)) Fail();
  }
  bool Is(std::string_view symbol) const {
    return token_.kind == TokenKind::kSymbol && token_.text == symbol;
  }
  bool Take(std::string_view symbol) {
    if (!Is(symbol)) return false;
    Advance();
    return true;
  }
  void Expect(std::string_view symbol) {
    if (!Take(symbol)) Fail();
  }
  bool IsName() const {
    return token_.kind == TokenKind::kBracketed ||
           (token_.kind == TokenKind::kName && !IsReserved(token_));
  }
  std::string_view Name() {
    if (!IsName()) Fail();
    const std::string_view name = token_.text;
    Advance();
    return name;
  }

  Node* Parent(NodeKind kind, std::initializer_list<Node*> children) {
    Node* node = tree_.NewNode(kind);
    node->children.reserve(children.size());
    for (Node* child : children) Adopt(node, child);
    return node;
  }
  void Adopt(Node* parent, Node* child) {
    parent->children.push_back(child);
    parent->height = std::max(parent->height, child->height + 1);
    if (parent->height > kTallestExpression) FailDepth();
  }

  SelectTree* Select() {
    const Level level(*this);
    ExpectWord(kSelectWord);
    SelectTree* select = tree_.NewSelect();
    select->distinct = TakeWord(PackWord("DISTINCT"));
    do {
      select->items.push_back(Item());
    } while (Take(","));
    ExpectWord(kFromWord);
    do {
      TableReference reference;
      reference.name = Name();
      if (TakeWord(kAsWord) || IsName()) reference.alias = Name();
      select->tables.push_back(reference);
    } while (Take(","));
    if (TakeWord(kWhereWord)) select->where = Or();
    if (TakeWord(PackWord("GROUP"))) {
      ExpectWord(kByWord);
      do {
        select->groupBy.push_back(Or());
      } while (Take(","));
      if (TakeWord(PackWord("HAVING"))) select->having = Or();
    }
    if (TakeWord(PackWord("ORDER"))) {
      ExpectWord(kByWord);
      do {
        OrderTerm term;
        term.value = Or();
        term.descending = TakeWord(PackWord("DESC"));
        if (!term.descending) TakeWord(PackWord("ASC"));
        select->orderBy.push_back(term);
      } while (Take(","));
    }
    return select;
  }

  SelectItem Item() {
    SelectItem item;
    if (Take("*")) return item;
    item.value = Or();
    if (item.value->kind == NodeKind::kColumn && item.value->star) {
      item.qualifier = item.value->qualifier;
      item.value = nullptr;
      return item;
    }
    if (TakeWord(kAsWord)) item.alias = Name();
    return item;
  }

  void Insert() {
    tree_.kind = StatementKind::kInsert;
    ExpectWord(PackWord("INTO"));
    tree_.table = Name();
    if (Take("(")) {
      do {
        tree_.columns.push_back(Name());
      } while (Take(","));
      Expect(")");
    }
    if (IsWord(kSelectWord)) {
      tree_.select = Select();
      return;
    }
    ExpectWord(kValuesWord);
    Expect("(");
    do {
      tree_.values.push_back(Or());
    } while (Take(","));
    Expect(")");
  }

  void Update() {
    tree_.kind = StatementKind::kUpdate;
    tree_.table = Name();
    ExpectWord(kSetWord);
    do {
      Assignment assignment;
      assignment.column = Name();
      if (Take(".")) {
        if (!base::SameText(assignment.column, tree_.table)) Fail();
        assignment.column = Name();
      }
      Expect("=");
      assignment.value = Or();
      tree_.assignments.push_back(assignment);
    } while (Take(","));
    if (TakeWord(kWhereWord)) tree_.where = Or();
  }

  void Delete() {
    tree_.kind = StatementKind::kDelete;
    Take("*");
    ExpectWord(kFromWord);
    tree_.table = Name();
    if (TakeWord(kWhereWord)) tree_.where = Or();
  }

  Node* Or() {
    Node* left = And();
    while (TakeWord(kOrWord)) left = Parent(NodeKind::kOr, {left, And()});
    return left;
  }

  Node* And() {
    Node* left = Not();
    while (TakeWord(kAndWord)) left = Parent(NodeKind::kAnd, {left, Not()});
    return left;
  }

  Node* Not() {
    if (!TakeWord(kNotWord)) return Comparison();
    const Level level(*this);
    return Parent(NodeKind::kNot, {Not()});
  }

  Node* Comparison() {
    Node* left = Concatenation();
    while (true) {
      if (token_.kind == TokenKind::kSymbol) {
        NodeKind kind;
        if (token_.text == "=") {
          kind = NodeKind::kEqual;
        } else if (token_.text == "<>") {
          kind = NodeKind::kNotEqual;
        } else if (token_.text == "<") {
          kind = NodeKind::kLess;
        } else if (token_.text == "<=") {
          kind = NodeKind::kLessEqual;
        } else if (token_.text == ">") {
          kind = NodeKind::kGreater;
        } else if (token_.text == ">=") {
          kind = NodeKind::kGreaterEqual;
        } else {
          return left;
        }
        Advance();
        left = Parent(kind, {left, Concatenation()});
        continue;
      }
      if (token_.kind != TokenKind::kName) return left;
      if (TakeWord(PackWord("IS"))) {
        const bool negated = TakeWord(kNotWord);
        ExpectWord(kNullWord);
        left = Parent(NodeKind::kIsNull, {left});
        left->negated = negated;
        continue;
      }
      const bool negated = TakeWord(kNotWord);
      if (TakeWord(PackWord("LIKE"))) {
        left = Parent(NodeKind::kLike, {left, Concatenation()});
      } else if (TakeWord(PackWord("BETWEEN"))) {
        Node* low = Concatenation();
        ExpectWord(kAndWord);
        left = Parent(NodeKind::kBetween, {left, low, Concatenation()});
      } else if (TakeWord(kInWord)) {
        left = In(left);
      } else if (negated) {
        Fail();
      } else {
        return left;
      }
      left->negated = negated;
    }
  }

  Node* In(Node* value) {
    const Level level(*this);
    Expect("(");
    if (IsWord(kSelectWord)) {
      Node* node = Parent(NodeKind::kInSelect, {value});
      node->select = Select();
      Expect(")");
      return node;
    }
    Node* node = Parent(NodeKind::kInList, {value});
    do {
      Adopt(node, Or());
    } while (Take(","));
    Expect(")");
    return node;
  }

  Node* Concatenation() {
    Node* left = Sum();
    while (Take("&")) left = Parent(NodeKind::kConcatenate, {left, Sum()});
    return left;
  }

  Node* Sum() {
    Node* left = Product();
    while (true) {
      if (Take("+")) {
        left = Parent(NodeKind::kAdd, {left, Product()});
      } else if (Take("-")) {
        left = Parent(NodeKind::kSubtract, {left, Product()});
      } else {
        return left;
      }
    }
  }

  Node* Product() {
    Node* left = Sign();
    while (true) {
      if (Take("*")) {
        left = Parent(NodeKind::kMultiply, {left, Sign()});
      } else if (Take("/")) {
        left = Parent(NodeKind::kDivide, {left, Sign()});
      } else {
        return left;
      }
    }
  }

  Node* Sign() {
    if (Is("-") || Is("+")) {
      const bool negative = Is("-");
      Advance();
      const Level level(*this);
      Node* value = Sign();
      return negative ? Parent(NodeKind::kNegate, {value}) : value;
    }
    return Primary();
  }

  Node* Primary() {
    switch (token_.kind) {
      case TokenKind::kText:
        return Text();
      case TokenKind::kNumber:
        return Number();
      case TokenKind::kBracketed:
        return Column();
      case TokenKind::kName:
        return Word();
      default:
        break;
    }
    if (!Take("(")) Fail();
    const Level level(*this);
    Node* node = nullptr;
    if (IsWord(kSelectWord)) {
      node = tree_.NewNode(NodeKind::kSubselect);
      node->select = Select();
    } else {
      node = Or();
    }
    Expect(")");
    return node;
  }

  Node* Text() {
    Node* node = tree_.NewNode(NodeKind::kText);
    node->text = token_.text;
    if (token_.text.find(token_.quote) != std::string_view::npos) {
      std::string single;
      for (std::size_t i = 0; i < token_.text.size(); ++i) {
        single += token_.text[i];
        if (token_.text[i] == token_.quote) ++i;
      }
      node->text = tree_.Keep(single);
    }
    Advance();
    return node;
  }

  Node* Number() {
    const char* const begin = token_.text.data();
    const char* const end = begin + token_.text.size();
    Node* node = tree_.NewNode(NodeKind::kInteger);
    const auto whole = std::from_chars(begin, end, node->integer);
    if (whole.ec != std::errc() || whole.ptr != end) {
      node->kind = NodeKind::kReal;
      const auto real = std::from_chars(begin, end, node->real);
      if (real.ec != std::errc() || real.ptr != end || !std::isfinite(node->real)) Fail();
    }
    Advance();
    return node;
  }

  Node* Column() {
    Node* node = tree_.NewNode(NodeKind::kColumn);
    node->text = Name();
    if (!Take(".")) return node;
    node->qualifier = node->text;
    if (Take("*")) {
      node->star = true;
    } else {
      node->text = Name();
    }
    return node;
  }

  Node* Word() {
    if (IsWord(PackWord("TRUE")) || IsWord(PackWord("FALSE"))) {
      Node* node = tree_.NewNode(NodeKind::kBoolean);
      node->integer = IsWord(PackWord("TRUE")) ? -1 : 0;
      Advance();
      return node;
    }
    if (TakeWord(kNullWord)) return tree_.NewNode(NodeKind::kNull);
    if (TakeWord(PackWord("EXISTS"))) {
      Expect("(");
      Node* node = tree_.NewNode(NodeKind::kExists);
      node->select = Select();
      Expect(")");
      return node;
    }
    if (next_.kind != TokenKind::kSymbol || next_.text != "(" || IsReserved(token_)) {
      return Column();
    }
    const Level level(*this);
    Node* node = tree_.NewNode(NodeKind::kCall);
    node->text = token_.text;
    Advance();
    Advance();
    if (Take("*")) {
      node->star = true;
    } else if (!Is(")")) {
      do {
        Adopt(node, Or());
      } while (Take(","));
    }
    Expect(")");
    return node;
  }

  std::string_view statement_;
  StatementTree& tree_;
  Tokenizer tokens_;
  Token token_;
  Token next_;
  int level_ = 0;
};

}  // namespace

std::string_view StatementTree::Keep(std::string_view text) {
  if (text.empty()) return {};
  char* kept = static_cast<char*>(memory_.allocate(text.size(), 1));
  std::copy(text.begin(), text.end(), kept);
  return {kept, text.size()};
}

void ParseStatement(std::string_view statement, StatementTree& tree) {
  Parser(statement, tree).Statement();
}

void ParseCondition(std::string_view condition, StatementTree& tree) {
  Parser(condition, tree).Condition();
}

}  // namespace brenvo::dialect
