#include "localdb/engine/WindowFunction.h"

#include <algorithm>
#include <array>

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

enum class Result : uint8_t { Number, Share, Argument };

struct Entry {
    QStringView name;
    const char* storage;
    size_t least, most;  // arguments
    Result result;
    bool frame;  // a frame may be written
};

constexpr std::array<Entry, 10> Table = {{
    {u"row_number", "row_number", 0, 0, Result::Number, false},
    {u"rank", "rank", 0, 0, Result::Number, false},
    {u"dense_rank", "dense_rank", 0, 0, Result::Number, false},
    {u"ntile", "ntile", 1, 1, Result::Number, false},
    {u"percent_rank", "percent_rank", 0, 0, Result::Share, false},
    {u"cume_dist", "cume_dist", 0, 0, Result::Share, false},
    {u"lag", "lag", 1, 3, Result::Argument, false},
    {u"lead", "lead", 1, 3, Result::Argument, false},
    {u"first_value", "first_value", 1, 1, Result::Argument, true},
    {u"last_value", "last_value", 1, 1, Result::Argument, true},
}};

const Entry* FindEntry(const QString& name) {
    const auto* found = std::find_if(Table.begin(), Table.end(), [&name](const Entry& entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found != Table.end() ? found : nullptr;
}

std::string EdgeText(const tsql::FrameBound& bound) {
    switch (bound.edge) {
        case tsql::FrameEdge::UnboundedPreceding:
            return "UNBOUNDED PRECEDING";
        case tsql::FrameEdge::Preceding:
            return std::to_string(bound.count) + " PRECEDING";
        case tsql::FrameEdge::CurrentRow:
            return "CURRENT ROW";
        case tsql::FrameEdge::Following:
            return std::to_string(bound.count) + " FOLLOWING";
        default:
            return "UNBOUNDED FOLLOWING";
    }
}

bool IsCounted(const tsql::FrameBound& bound) {
    return bound.edge == tsql::FrameEdge::Preceding || bound.edge == tsql::FrameEdge::Following;
}

std::string FrameText(const tsql::Window& window) {
    if (window.unit == tsql::FrameUnit::None) return {};
    if (window.order.empty()) throw SqlError(10756);
    const bool range = window.unit == tsql::FrameUnit::Range;
    if (range && (IsCounted(window.begin) || IsCounted(window.end))) throw SqlError(4194);
    return std::string(range ? " RANGE" : " ROWS") + " BETWEEN " + EdgeText(window.begin) +
           " AND " + EdgeText(window.end);
}

BoundPtr Counted(BoundPtr value, int64_t least, int number) {
    value = ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::BigInt));
    return std::make_unique<BoundRowCount>(std::move(value), least, number);
}

// The second argument of LAG and LEAD counts rows, the third is of the first one's type.
void ConvertArguments(const Entry& entry, std::vector<BoundPtr>& parts) {
    if (entry.result == Result::Number && !parts.empty()) {
        if (ClassOf(parts[0]->type) != TypeClass::Integer) throw SqlError(4116);
        parts[0] = Counted(std::move(parts[0]), 1, 4116);
    }
    if (entry.result != Result::Argument) return;
    if (parts[0]->untypedNull) {
        parts[0] = ExpressionBinder::Convert(std::move(parts[0]), IntType());
    }
    if (parts.size() > 1) parts[1] = Counted(std::move(parts[1]), 0, 8730);
    if (parts.size() > 2) {
        parts[2] = ExpressionBinder::Convert(std::move(parts[2]), parts[0]->type);
    }
}

}  // namespace

void BoundOver::Write(SqlWriter& writer, const std::vector<BoundPtr>& parts) const {
    writer.Text(" OVER (");
    const char* separator = "PARTITION BY ";
    size_t at = first;
    for (; at < first + partitions; ++at) {
        writer.Text(separator);
        writer.Collated(*parts[at]);
        separator = ",";
    }
    separator = partitions > 0 ? " ORDER BY " : "ORDER BY ";
    for (const bool down : descending) {
        writer.Text(separator);
        writer.Collated(*parts[at++]);
        if (down) writer.Text(" DESC");
        separator = ",";
    }
    writer.Text(frame + ")");
}

std::string BoundOver::Detail() const {
    std::string text = std::to_string(first) + '/' + std::to_string(partitions) + '/';
    for (const bool down : descending) text += down ? 'd' : 'a';
    return text + frame;
}

void BoundWindowFunction::Write(SqlWriter& writer) const {
    writer.Text(name_);
    writer.Text("(");
    for (size_t i = 0; i < arguments_; ++i) {
        if (i > 0) writer.Text(",");
        writer.Expression(*parts[i]);
    }
    writer.Text(")");
    over.Write(writer, parts);
}

Collating BoundWindowFunction::FoldCollations() const {
    return engine::FoldCollations(std::span<const BoundPtr>(parts).first(arguments_));
}

std::string BoundWindowFunction::Detail() const {
    return name_ + ('/' + over.Detail());
}

bool HasWindow(const BoundExpression& expression) {
    return expression.IsWindow() ||
           std::any_of(expression.parts.begin(), expression.parts.end(),
                       [](const BoundPtr& part) { return HasWindow(*part); });
}

bool IsWindowName(const QString& name) {
    return FindEntry(name) != nullptr;
}

BoundOver BindOver(const tsql::Window& window, ExpressionBinder& binder,
                   std::vector<BoundPtr>& parts) {
    BoundOver over;
    over.first = parts.size();
    over.partitions = window.partition.size();
    for (const tsql::ExpressionPtr& part : window.partition) parts.push_back(binder.Value(*part));
    for (const tsql::OrderItem& item : window.order) {
        parts.push_back(binder.Value(*item.expression));
        over.descending.push_back(item.descending);
        if (!parts.back()->IsConstant()) continue;
        const bool integer = ClassOf(parts.back()->type) == TypeClass::Integer;
        throw SqlError(integer ? 5308 : 5309, {}, item.expression->line);
    }
    over.frame = FrameText(window);
    return over;
}

BoundPtr BindWindowFunction(const tsql::Function& function, ExpressionBinder& binder) {
    const Entry& entry = *FindEntry(function.name);
    const QString name = function.name.toUpper();
    if (!function.over) throw SqlError(10753, {name});
    if (function.star || function.distinct) {
        throw SqlError(102, {function.star ? QStringLiteral("*") : QStringLiteral("distinct")});
    }
    const size_t count = function.arguments.size();
    if (count < entry.least || count > entry.most) {
        const QString lower = function.name.toLower();
        if (entry.least == entry.most) throw SqlError(174, {lower, QString::number(entry.least)});
        throw SqlError(189, {lower, QString::number(entry.least), QString::number(entry.most)});
    }
    if (function.over->order.empty()) throw SqlError(4112, {name});
    if (!entry.frame && function.over->unit != tsql::FrameUnit::None) {
        throw SqlError(10752, {name});
    }
    auto node = std::make_unique<BoundWindowFunction>(entry.storage, count);
    for (const tsql::ExpressionPtr& argument : function.arguments) {
        node->parts.push_back(binder.Value(*argument));
    }
    ConvertArguments(entry, node->parts);
    switch (entry.result) {
        case Result::Number:
            node->type = MakeType(TypeKind::BigInt);
            break;
        case Result::Share:
            node->type = MakeType(TypeKind::Float);
            break;
        default:
            node->type = node->parts.front()->type;
    }
    node->over = BindOver(*function.over, binder, node->parts);
    return node;
}

}  // namespace quarv::localdb::engine
