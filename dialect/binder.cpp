#include "binder.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "dialect/convert.h"
#include "dialect/functions.h"
#include "engine/database_error.h"

namespace brenvo::dialect {
namespace {

struct Scope {
  const TableReference* tables;
  std::size_t count;
  const Scope* outer;
};

enum class Aggregates { kForbidden, kAllowed };

std::string_view NameOf(const TableReference& reference) {
  return reference.alias.empty() ? reference.name : reference.alias;
}

bool IsNumber(ValueType type) {
  return type == ValueType::kInteger || type == ValueType::kReal || type == ValueType::kYesNo;
}

[[noreturn]] void FailTypes() {
  throw engine::DatabaseError(engine::DatabaseError::kTypeMismatchInExpression,
                              "Tipo di dati non corrispondente nell'espressione.");
}

[[noreturn]] void FailSyntax(const std::string& what) {
  throw engine::DatabaseError(engine::DatabaseError::kSyntax, what);
}

bool IsAggregate(const Node& node) {
  if (node.kind != NodeKind::kCall || node.function == nullptr) return false;
  using Kind = Function::Kind;
  const Kind kind = node.function->kind;
  return kind == Kind::kCount || kind == Kind::kSum || kind == Kind::kExtreme;
}

bool HoldsAggregate(const Node& node) {
  return IsAggregate(node) || std::any_of(node.children.begin(), node.children.end(),
                                          [](const Node* child) { return HoldsAggregate(*child); });
}

class Binder {
 public:
  Binder(const Schema& schema, StatementTree& tree) : schema_(schema), tree_(tree) {}

  const TableSchema* Table(std::string_view name) const {
    const TableSchema* table = schema_.FindTable(name);
    if (table == nullptr) {
      throw engine::DatabaseError(engine::DatabaseError::kUnknownTable,
                                  "La tabella '" + std::string(name) + "' non esiste.");
    }
    return table;
  }

  void Select(SelectTree& select, const Scope* outer) {
    for (TableReference& reference : select.tables) {
      reference.table = Table(reference.name);
      tree_.read.push_back(reference.table);
      for (const TableReference& other : select.tables) {
        if (&other == &reference) break;
        if (base::SameText(NameOf(other), NameOf(reference))) {
          FailSyntax("La tabella '" + std::string(NameOf(reference)) + "' compare due volte.");
        }
      }
    }
    const Scope scope{select.tables.data(), select.tables.size(), outer};
    ExpandStars(select);
    for (SelectItem& item : select.items) Expression(*item.value, scope, Aggregates::kAllowed);
    if (select.where != nullptr) Condition(*select.where, scope, Aggregates::kForbidden);
    for (Node* term : select.groupBy) Expression(*term, scope, Aggregates::kForbidden);
    if (select.having != nullptr) Condition(*select.having, scope, Aggregates::kAllowed);
    for (OrderTerm& term : select.orderBy) {
      if (term.value->kind == NodeKind::kInteger) {
        const std::int64_t place = term.value->integer;
        if (place < 1 || place > static_cast<std::int64_t>(select.items.size())) {
          FailSyntax("L'ordinamento indica una colonna che non c'è.");
        }
        term.value = select.items[static_cast<std::size_t>(place - 1)].value;
        continue;
      }
      Expression(*term.value, scope, Aggregates::kAllowed);
    }
    if (select.distinct && IsGrouped(select)) {
      FailSyntax("DISTINCT non si può usare insieme a un raggruppamento.");
    }
  }

  void Condition(Node& node, const Scope& scope, Aggregates aggregates) {
    Expression(node, scope, aggregates);
    CheckCondition(node);
  }

  void Expression(Node& node, const Scope& scope, Aggregates aggregates) {
    if (node.kind == NodeKind::kCall) {
      Call(node, scope, aggregates);
      return;
    }
    for (Node* child : node.children) Expression(*child, scope, aggregates);
    if (node.select != nullptr) Select(*node.select, &scope);
    node.type = TypeAfterChildren(node, scope);
  }

 private:
  // "*" and "t.*" become the columns that they stand for.
  void ExpandStars(SelectTree& select) {
    const bool none = std::none_of(select.items.begin(), select.items.end(),
                                   [](const SelectItem& item) { return item.value == nullptr; });
    if (none) return;
    TreeList<SelectItem> items(tree_.Memory());
    for (const SelectItem& item : select.items) {
      if (item.value != nullptr) {
        items.push_back(item);
        continue;
      }
      bool found = false;
      for (const TableReference& reference : select.tables) {
        if (!item.qualifier.empty() && !base::SameText(item.qualifier, NameOf(reference))) continue;
        found = true;
        for (const Column& column : reference.table->columns) {
          SelectItem expanded;
          expanded.value = tree_.NewNode(NodeKind::kColumn);
          expanded.value->text = column.name;
          if (select.tables.size() > 1) expanded.value->qualifier = NameOf(reference);
          items.push_back(expanded);
        }
      }
      if (!found) FailName(item.qualifier);
    }
    select.items = std::move(items);
  }

  [[noreturn]] static void FailName(std::string_view name) {
    throw engine::DatabaseError(
        engine::DatabaseError::kUnknownParameter,
        "Parametri insufficienti: '" + std::string(name) + "' non è il nome di una colonna.");
  }

  static ValueType ColumnName(Node& node, const Scope& scope) {
    if (node.star) FailSyntax("L'asterisco non può stare in un'espressione.");
    for (const Scope* at = &scope; at != nullptr; at = at->outer) {
      const TableReference* found = nullptr;
      for (std::size_t i = 0; i < at->count; ++i) {
        const TableReference& reference = at->tables[i];
        if (!node.qualifier.empty() && !base::SameText(node.qualifier, NameOf(reference))) continue;
        const std::size_t column = reference.table->FindColumn(node.text);
        if (column == TableSchema::kNone) continue;
        if (found != nullptr) {
          throw engine::DatabaseError(
              engine::DatabaseError::kAmbiguousName,
              "Il nome '" + std::string(node.text) + "' sta in più tabelle.");
        }
        found = &reference;
        node.table = reference.table;
        node.column = column;
      }
      if (found == nullptr) continue;
      if (!node.qualifier.empty() || at->count > 1) node.qualifier = NameOf(*found);
      return TypeOfColumn(node.table->columns[node.column].type);
    }
    FailName(node.text);
  }

  void Call(Node& node, const Scope& scope, Aggregates aggregates) {
    const Function* function = FindFunction(node.text);
    if (function == nullptr) {
      throw engine::DatabaseError(engine::DatabaseError::kUnknownFunction,
                                  "La funzione '" + std::string(node.text) + "' non esiste.");
    }
    node.function = function;
    const bool aggregate = IsAggregate(node);
    if (aggregate && aggregates == Aggregates::kForbidden) {
      FailSyntax("La funzione '" + std::string(function->name) + "' non può stare qui.");
    }
    const bool starred = node.star && function->kind == Function::Kind::kCount;
    const int count = static_cast<int>(node.children.size());
    if (!starred && (node.star || count < function->fewest || count > function->most)) {
      FailSyntax("La funzione '" + std::string(function->name) +
                 "' ha un numero sbagliato di argomenti.");
    }
    for (std::size_t i = 0; i < node.children.size(); ++i) {
      Node& child = *node.children[i];
      Expression(child, scope, aggregate ? Aggregates::kForbidden : aggregates);
      CheckArgument(child, function->arguments[i]);
    }
    node.type = function->result;
    switch (function->kind) {
      case Function::Kind::kExtreme:
        node.type = node.children[0]->type;
        break;
      case Function::Kind::kDateValue:
      case Function::Kind::kDate:
        DateCall(node);
        break;
      case Function::Kind::kCondition:
        CheckCondition(*node.children[0]);
        if (node.children[1]->type == node.children[2]->type) node.type = node.children[1]->type;
        break;
      default:
        break;
    }
  }

  static void CheckArgument(const Node& child, char wanted) {
    const ValueType type = child.type;
    if (type == ValueType::kAny || wanted == '?') return;
    // A date's parts are also read from a text.
    const bool fits = wanted == 't'   ? type == ValueType::kText
                      : wanted == 'n' ? IsNumber(type)
                                      : type == ValueType::kDate || type == ValueType::kText;
    if (!fits) FailTypes();
  }

  // The date of a constant text is worked out now.
  static void DateCall(Node& node) {
    const Node& child = *node.children[0];
    if (IsNumber(child.type)) FailTypes();
    if (child.kind != NodeKind::kText && child.kind != NodeKind::kDate) return;
    const base::DateTime date =
        child.kind == NodeKind::kDate ? child.date : DateOfLiteral(child.text);
    node.date = node.function->kind == Function::Kind::kDateValue ? date.DatePart() : date;
    node.kind = NodeKind::kDate;
    node.children.clear();
  }

  static void CheckComparable(ValueType a, ValueType b) {
    if (a == ValueType::kAny || b == ValueType::kAny || a == b) return;
    if (!IsNumber(a) || !IsNumber(b)) FailTypes();
  }

  ValueType Sum(Node& node) {
    const Node& a = *node.children[0];
    const Node& b = *node.children[1];
    if (a.kind == NodeKind::kText && b.kind == NodeKind::kText) {
      node.text = tree_.Keep(std::string(a.text) + std::string(b.text));
      node.kind = NodeKind::kText;
      node.children.clear();
      return ValueType::kText;
    }
    if (a.type == ValueType::kText || b.type == ValueType::kText) {
      CheckComparable(a.type, b.type);
      return ValueType::kText;
    }
    return Arithmetic(node);
  }

  static ValueType Arithmetic(const Node& node) {
    bool whole = true;
    for (const Node* child : node.children) {
      if (child->type == ValueType::kAny) continue;
      if (!IsNumber(child->type)) FailTypes();
      whole = whole && child->type != ValueType::kReal;
    }
    return whole && node.kind != NodeKind::kDivide ? ValueType::kInteger : ValueType::kReal;
  }

  static ValueType Negate(Node& node) {
    const Node& child = *node.children[0];
    const NodeKind kind = child.kind;
    const ValueType type = Arithmetic(node);
    if (kind == NodeKind::kInteger || kind == NodeKind::kReal) {
      node.integer = -child.integer;
      node.real = -child.real;
      node.kind = kind;
      node.children.clear();
    }
    return type;
  }

  static void CheckOneColumn(const SelectTree& select) {
    if (select.items.size() != 1) {
      FailSyntax("Una selezione fra parentesi deve avere una sola colonna.");
    }
  }

  // Yes/no, or a number for it.
  static void CheckCondition(const Node& node) {
    if (node.type != ValueType::kAny && !IsNumber(node.type)) FailTypes();
  }

  ValueType TypeAfterChildren(Node& node, const Scope& scope) {
    switch (node.kind) {
      case NodeKind::kText:
        return ValueType::kText;
      case NodeKind::kInteger:
        return ValueType::kInteger;
      case NodeKind::kReal:
        return ValueType::kReal;
      case NodeKind::kBoolean:
        return ValueType::kYesNo;
      case NodeKind::kNull:
      case NodeKind::kCall:
        return ValueType::kAny;
      case NodeKind::kDate:
        return ValueType::kDate;
      case NodeKind::kColumn:
        return ColumnName(node, scope);
      case NodeKind::kNegate:
        return Negate(node);
      case NodeKind::kNot:
      case NodeKind::kOr:
      case NodeKind::kAnd:
        for (const Node* child : node.children) CheckCondition(*child);
        return ValueType::kYesNo;
      case NodeKind::kEqual:
      case NodeKind::kNotEqual:
      case NodeKind::kLess:
      case NodeKind::kLessEqual:
      case NodeKind::kGreater:
      case NodeKind::kGreaterEqual:
      case NodeKind::kBetween:
      case NodeKind::kInList:
        for (const Node* child : node.children) {
          CheckComparable(node.children[0]->type, child->type);
        }
        return ValueType::kYesNo;
      case NodeKind::kLike:
        if (node.children[0]->type == ValueType::kDate) FailTypes();
        CheckComparable(ValueType::kText, node.children[1]->type);
        return ValueType::kYesNo;
      case NodeKind::kInSelect:
        CheckOneColumn(*node.select);
        CheckComparable(node.children[0]->type, node.select->items[0].value->type);
        return ValueType::kYesNo;
      case NodeKind::kIsNull:
      case NodeKind::kExists:
        return ValueType::kYesNo;
      case NodeKind::kAdd:
        return Sum(node);
      case NodeKind::kSubtract:
      case NodeKind::kMultiply:
      case NodeKind::kDivide:
        return Arithmetic(node);
      case NodeKind::kConcatenate:
        return ValueType::kText;
      case NodeKind::kSubselect:
        CheckOneColumn(*node.select);
        return node.select->items[0].value->type;
    }
    return ValueType::kAny;
  }

  const Schema& schema_;
  StatementTree& tree_;
};

void BindInsert(const TableSchema& table, Binder& binder, StatementTree& tree) {
  if (tree.columns.empty()) {
    for (const Column& column : table.columns) tree.columns.push_back(column.name);
  }
  for (const std::string_view column : tree.columns) {
    if (table.FindColumn(column) == TableSchema::kNone) {
      throw engine::DatabaseError(
          engine::DatabaseError::kUnknownParameter,
          "La tabella '" + table.name + "' non ha una colonna '" + std::string(column) + "'.");
    }
  }
  const Scope empty{nullptr, 0, nullptr};
  if (tree.select != nullptr) {
    binder.Select(*tree.select, nullptr);
  } else {
    for (Node* value : tree.values) binder.Expression(*value, empty, Aggregates::kForbidden);
  }
  const std::size_t given = tree.select != nullptr ? tree.select->items.size() : tree.values.size();
  if (given != tree.columns.size()) {
    throw engine::DatabaseError(engine::DatabaseError::kColumnCount,
                                "I valori sono " + std::to_string(given) + ", le colonne " +
                                    std::to_string(tree.columns.size()) + ".");
  }
}

}  // namespace

bool IsGrouped(const SelectTree& select) {
  if (!select.groupBy.empty() || select.having != nullptr) return true;
  return std::any_of(select.items.begin(), select.items.end(), [](const SelectItem& item) {
    return item.value != nullptr && HoldsAggregate(*item.value);
  });
}

void BindStatement(const Schema& schema, StatementTree& tree) {
  Binder binder(schema, tree);
  if (tree.kind == StatementKind::kSelect) {
    binder.Select(*tree.select, nullptr);
    return;
  }
  TableReference reference;
  reference.name = tree.table;
  reference.table = binder.Table(tree.table);
  if (tree.kind == StatementKind::kInsert) {
    BindInsert(*reference.table, binder, tree);
    return;
  }
  const Scope scope{&reference, 1, nullptr};
  for (Assignment& assignment : tree.assignments) {
    if (reference.table->FindColumn(assignment.column) == TableSchema::kNone) {
      throw engine::DatabaseError(engine::DatabaseError::kUnknownParameter,
                                  "La tabella '" + reference.table->name +
                                      "' non ha una colonna '" + std::string(assignment.column) +
                                      "'.");
    }
    binder.Expression(*assignment.value, scope, Aggregates::kForbidden);
  }
  if (tree.where != nullptr) binder.Condition(*tree.where, scope, Aggregates::kForbidden);
}

void BindCondition(const Schema& schema, const TableSchema& table, StatementTree& tree) {
  TableReference reference;
  reference.name = table.name;
  reference.table = &table;
  const Scope scope{&reference, 1, nullptr};
  Binder(schema, tree).Condition(*tree.where, scope, Aggregates::kForbidden);
}

}  // namespace brenvo::dialect
