// Expression: the tree of what stands for a value or a condition. Nodes own their parts. The tree
// knows names, not what they stand for. Its height is bounded by the parser, so that walking it by
// recursion is safe.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/TypeName.h"

namespace quarv::localdb::tsql {

struct Query;
struct Window;

enum class ExpressionKind : uint8_t {
    Literal,
    Variable,
    Column,
    Negate,
    Arithmetic,
    Cast,
    Case,
    Function,
    Subquery,
    Collate,
    Comparison,
    Junction,
    Not,
    IsNull,
    Like,
    In,
    Between,
    Exists,
    Quantified,
};

struct Expression {
    const ExpressionKind kind;
    int line = 0;
    int height = 1;  // of the tree below and including this node

    virtual ~Expression();

  protected:
    explicit Expression(ExpressionKind k) : kind(k) {}
};

using ExpressionPtr = std::unique_ptr<Expression>;
using ExpressionList = std::vector<ExpressionPtr>;

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

enum class LiteralKind : uint8_t {
    Null,
    Integer,
    Decimal,
    Float,
    Money,
    String,
    NationalString,
    Binary,
    Default,  // the word DEFAULT in a list of values or arguments
};

struct Literal : Expression {
    Literal(LiteralKind k, QString t)
        : Expression(ExpressionKind::Literal), literal(k), text(std::move(t)) {}
    LiteralKind literal;
    QString text;
};

struct Variable : Expression {
    explicit Variable(QString n) : Expression(ExpressionKind::Variable), name(std::move(n)) {}
    QString name;  // with "@"; "@@" for the system's
};

struct ColumnName : Expression {
    explicit ColumnName(ObjectName n) : Expression(ExpressionKind::Column), name(std::move(n)) {}
    ObjectName name;  // its schema is the table's name or alias
};

struct Negate : Expression {
    Negate() : Expression(ExpressionKind::Negate) {}
    char16_t sign = u'-';  // '-', '+' or '~'
    ExpressionPtr operand;
};

struct Arithmetic : Expression {
    Arithmetic() : Expression(ExpressionKind::Arithmetic) {}
    char16_t sign = u'+';  // + - * / % & | ^
    ExpressionPtr left, right;
};

struct Cast : Expression {
    Cast() : Expression(ExpressionKind::Cast) {}
    ExpressionPtr operand;
    TypeName type;
    ExpressionPtr style;       // of CONVERT, or nothing
    bool nullOnError = false;  // TRY_CAST and TRY_CONVERT
};

struct Case : Expression {
    Case() : Expression(ExpressionKind::Case) {}
    struct Branch {
        ExpressionPtr when, then;
    };
    ExpressionPtr operand;  // nothing in a searched CASE
    std::vector<Branch> branches;
    ExpressionPtr otherwise;  // or nothing
};

struct Function : Expression {
    Function();
    ~Function() override;
    QString name;
    ExpressionList arguments;
    bool star = false;  // COUNT(*)
    bool distinct = false;
    std::vector<OrderItem> within;  // WITHIN GROUP (ORDER BY ...)
    std::unique_ptr<Window> over;   // nothing without OVER
};

struct Subquery : Expression {
    Subquery();
    ~Subquery() override;
    std::unique_ptr<Query> query;
};

struct Collate : Expression {
    Collate() : Expression(ExpressionKind::Collate) {}
    ExpressionPtr operand;
    QString collation;  // as written
};

enum class ComparisonSign : uint8_t { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

struct Comparison : Expression {
    Comparison() : Expression(ExpressionKind::Comparison) {}
    ComparisonSign sign = ComparisonSign::Equal;
    ExpressionPtr left, right;
};

// AND or OR of two and more, flat, so that a thousand of them in a row are not a thousand deep.
struct Junction : Expression {
    Junction() : Expression(ExpressionKind::Junction) {}
    bool isAnd = true;
    ExpressionList terms;
};

struct Not : Expression {
    Not() : Expression(ExpressionKind::Not) {}
    ExpressionPtr operand;
};

struct IsNull : Expression {
    IsNull() : Expression(ExpressionKind::IsNull) {}
    ExpressionPtr operand;
    bool negated = false;
};

struct Like : Expression {
    Like() : Expression(ExpressionKind::Like) {}
    ExpressionPtr operand, pattern, escape;  // no escape: nothing
    bool negated = false;
};

struct In : Expression {
    In();
    ~In() override;
    ExpressionPtr operand;
    ExpressionList values;         // or
    std::unique_ptr<Query> query;  // this
    bool negated = false;
};

struct Between : Expression {
    Between() : Expression(ExpressionKind::Between) {}
    ExpressionPtr operand, low, high;
    bool negated = false;
};

struct Exists : Expression {
    Exists();
    ~Exists() override;
    std::unique_ptr<Query> query;
};

// operand sign ALL (query), or ANY and its synonym SOME.
struct Quantified : Expression {
    Quantified();
    ~Quantified() override;
    ComparisonSign sign = ComparisonSign::Equal;
    bool all = false;
    ExpressionPtr operand;
    std::unique_ptr<Query> query;
};

}  // namespace quarv::localdb::tsql
