// BoundNodes: the kinds of bound expressions but functions and queries.
#pragma once

#include "localdb/engine/BoundExpression.h"
#include "localdb/engine/Environment.h"
#include "localdb/tsql/Expression.h"

namespace quarv::localdb::engine {

class BoundConstant : public BoundExpression {
  public:
    BoundConstant(const SqlValue& value, const SqlType& ofType);
    SqlValue Evaluate(const Evaluation&) const override { return value_.View(); }
    bool IsConstant() const override { return true; }
    SqlValue Value() const { return value_.View(); }
    std::string Detail() const override;

  private:
    OwnedValue value_;
};

class BoundVariable : public BoundExpression {
  public:
    BoundVariable(size_t index, const SqlType& ofType) : index_(index) { type = ofType; }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.environment->VariableValue(index_);
    }
    std::string Detail() const override { return std::to_string(index_); }

  private:
    size_t index_;
};

class BoundSystemValue : public BoundExpression {
  public:
    BoundSystemValue(SystemValue what, const SqlType& ofType) : what_(what) { type = ofType; }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.environment->Ask(what_);
    }
    bool IsDeterministic() const override { return false; }
    std::string Detail() const override { return std::to_string(static_cast<int>(what_)); }

  private:
    SystemValue what_;
};

// A column of a row source, by its storage name ("s1.c2").
class BoundColumn : public BoundExpression {
  public:
    BoundColumn(std::string sql, QString name, const SqlType& ofType)
        : sql_(std::move(sql)), name_(std::move(name)) {
        type = ofType;
    }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    bool IsColumn() const override { return true; }
    const QString& Name() const { return name_; }
    std::string Detail() const override { return sql_; }

    bool identity = false;
    CollationId collation = CollationId::Server;
    // What a computed column without a place in the storage stands for, else nothing.
    std::shared_ptr<const BoundExpression> computed;

  protected:
    Collating FoldCollations() const override;

  private:
    std::string sql_;
    QString name_;
};

// A text with the collation that COLLATE gives it.
class BoundCollate : public BoundExpression {
  public:
    BoundCollate(BoundPtr operand, CollationId collation, CollationLabel label);
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return parts[0]->Evaluate(evaluation);
    }
    void Write(SqlWriter& writer) const override;
    std::string Detail() const override { return NameOf(collation_).toStdString(); }

  protected:
    Collating FoldCollations() const override;

  private:
    CollationId collation_;
    CollationLabel label_;
};

class BoundArithmetic : public BoundExpression {
  public:
    explicit BoundArithmetic(char16_t sign) : sign_(sign) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    std::string Detail() const override { return std::to_string(sign_); }

  private:
    char16_t sign_;
};

class BoundNegate : public BoundExpression {
  public:
    explicit BoundNegate(char16_t sign) : sign_(sign) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    std::string Detail() const override { return std::to_string(sign_); }

  private:
    char16_t sign_;
};

class BoundConvert : public BoundExpression {
  public:
    BoundConvert(BoundPtr operand, const SqlType& to, bool nullOnError = false);
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    // Between text and moments, by the style where that does not depend on the language.
    bool IsDeterministic() const override;
    // A second part, where there is one, is the style.

  private:
    bool nullOnError_;
};

// Parts: condition, value, condition, value, ..., and the ELSE value if there is one.
class BoundCase : public BoundExpression {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override;
};

// What gives true, false or unknown.
class BoundCondition : public BoundExpression {
  public:
    BoundCondition();
};

class BoundComparison : public BoundCondition {
  public:
    explicit BoundComparison(tsql::ComparisonSign sign) : sign_(sign) {}
    std::string Detail() const override { return std::to_string(static_cast<int>(sign_)); }
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    void Write(SqlWriter& writer) const override;

  private:
    tsql::ComparisonSign sign_;
};

class BoundJunction : public BoundCondition {
  public:
    explicit BoundJunction(bool isAnd) : isAnd_(isAnd) {}
    std::string Detail() const override { return isAnd_ ? "and" : "or"; }
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    void Write(SqlWriter& writer) const override;

  private:
    void WriteRange(SqlWriter& writer, size_t begin, size_t end) const;

    bool isAnd_;
};

class BoundNot : public BoundCondition {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    void Write(SqlWriter& writer) const override;
};

class BoundIsNull : public BoundCondition {
  public:
    explicit BoundIsNull(bool negated) : negated_(negated) { nullable = false; }
    std::string Detail() const override { return negated_ ? "not" : ""; }
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    void Write(SqlWriter& writer) const override;

  private:
    bool negated_;
};

// Parts: text, pattern and, where there is one, the escape character.
class BoundLike : public BoundCondition {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override;
};

// Parts: the operand and the values, all of one type.
class BoundIn : public BoundCondition {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    void Write(SqlWriter& writer) const override;
};

// The number of rows of TOP, OFFSET or FETCH: raises `number` where it is below `least` or null.
class BoundRowCount : public BoundExpression {
  public:
    BoundRowCount(BoundPtr count, int64_t least, int number);
    SqlValue Evaluate(const Evaluation& evaluation) const override;

  private:
    int64_t least_;
    int number_;
};

// True where `value` is a condition that holds: not false and not unknown.
inline bool Holds(const SqlValue& value) {
    return !value.IsNull() && value.integer != 0;
}

}  // namespace quarv::localdb::engine
