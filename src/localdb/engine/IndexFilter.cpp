#include "localdb/engine/IndexFilter.h"

#include <sqlite3.h>

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/LiteralValue.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqliteStatement.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/ExpressionText.h"

namespace quarv::localdb::engine {

namespace {

using tsql::ExpressionKind;

// Raised within; the index's name is known outside.
struct NotAFilter {};

// The storage's own literal for a value in its storage form, so that it compares as the column
// does.
std::string StoredLiteral(const SqlValue& value, const SqlType& type) {
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    std::string text;
    if (sqlite3_open(":memory:", &handle) == SQLITE_OK &&
        sqlite3_prepare_v2(handle, "SELECT quote(?1)", -1, &statement, nullptr) == SQLITE_OK) {
        BindStored(statement, 1, value, type);
        if (sqlite3_step(statement) == SQLITE_ROW) {
            text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    return text;
}

class Writer {
  public:
    explicit Writer(const TableInfo& table) : table_(table) {}

    std::string Condition(const tsql::Expression& node) {
        switch (node.kind) {
            case ExpressionKind::Junction: {
                const auto& junction = static_cast<const tsql::Junction&>(node);
                std::string sql;
                for (const tsql::ExpressionPtr& term : junction.terms) {
                    if (!sql.empty()) sql += junction.isAnd ? " AND " : " OR ";
                    sql += Condition(*term);
                }
                return '(' + sql + ')';
            }
            case ExpressionKind::IsNull: {
                const auto& test = static_cast<const tsql::IsNull&>(node);
                return Column(*test.operand).StorageName() +
                       (test.negated ? " IS NOT NULL" : " IS NULL");
            }
            case ExpressionKind::Comparison:
                return Comparison(static_cast<const tsql::Comparison&>(node));
            case ExpressionKind::In:
                return In(static_cast<const tsql::In&>(node));
            default:
                throw NotAFilter();
        }
    }

  private:
    const ColumnInfo& Column(const tsql::Expression& node) {
        if (node.kind != ExpressionKind::Column) throw NotAFilter();
        const QString& name = static_cast<const tsql::ColumnName&>(node).name.name;
        const ColumnInfo* column = table_.FindColumn(name);
        if (!column) throw SqlError(207, {name}, node.line);
        if (column->IsComputed()) throw NotAFilter();
        return *column;
    }

    std::string Constant(const tsql::Expression& node, const ColumnInfo& column) {
        const bool negative = node.kind == ExpressionKind::Negate;
        const tsql::Expression& literal =
            negative ? *static_cast<const tsql::Negate&>(node).operand : node;
        if (literal.kind != ExpressionKind::Literal) throw NotAFilter();
        BoundPtr bound = BindLiteral(static_cast<const tsql::Literal&>(literal));
        if (bound->untypedNull) throw NotAFilter();
        if (negative) {
            auto node2 = std::make_unique<BoundNegate>(static_cast<const tsql::Negate&>(node).sign);
            node2->type = bound->type;
            node2->parts.push_back(std::move(bound));
            bound = std::move(node2);
        }
        TypeRules::CheckConversion(bound->type, column.type, false);
        TextArena arena;
        const Evaluation evaluation{nullptr, &arena, nullptr};
        const SqlValue value = Conversion::Convert(bound->Evaluate(evaluation), bound->type,
                                                   column.type, Conversion::NoStyle, arena);
        return StoredLiteral(value, column.type);
    }

    std::string Comparison(const tsql::Comparison& node) {
        static constexpr const char* Signs[] = {"=", "<>", "<", "<=", ">", ">="};
        const ColumnInfo& column = Column(*node.left);
        return column.StorageName() + ' ' + Signs[static_cast<size_t>(node.sign)] + ' ' +
               Constant(*node.right, column);
    }

    std::string In(const tsql::In& node) {
        if (node.query || node.negated) throw NotAFilter();
        const ColumnInfo& column = Column(*node.operand);
        std::string sql;
        for (const tsql::ExpressionPtr& value : node.values) {
            sql += (sql.empty() ? "" : " OR ") + column.StorageName() + " = " +
                   Constant(*value, column);
        }
        return '(' + sql + ')';
    }

    const TableInfo& table_;
};

}  // namespace

QString IndexFilter::Text(const TableInfo& table, const tsql::Expression& condition,
                          const QString& index) {
    try {
        // OR cannot be written; an IN list, kept as one, can.
        if (condition.kind == ExpressionKind::Junction &&
            !static_cast<const tsql::Junction&>(condition).isAnd) {
            throw NotAFilter();
        }
        Writer(table).Condition(condition);
    } catch (const NotAFilter&) {
        throw SqlError(10735, {index, table.object.schema + u'.' + table.object.name},
                       condition.line);
    }
    return tsql::ConditionText(condition);
}

std::string IndexFilter::Sql(const TableInfo& table, const QString& text) {
    try {
        return Writer(table).Condition(*tsql::ParseConditionText(text));
    } catch (const NotAFilter&) {
        throw SqlError(945, {table.object.name});
    }
}

}  // namespace quarv::localdb::engine
