#include "localdb/engine/Functions.h"

#include <QHash>
#include <array>

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

using FunctionTable = QHash<QString, const FunctionEntry*>;

FunctionTable AllFunctions() {
    FunctionTable all;
    for (const auto& table :
         {TextFunctions(), TextEditFunctions(), TextSearchFunctions(), NumberFunctions(),
          MathFunctions(), DateFunctions(), DateMakers(), ChoiceFunctions(), SystemFunctions(),
          HashFunctions(), MetadataFunctions(), ServerFunctions()}) {
        for (const FunctionEntry& entry : table) all.insert(entry.name.toString(), &entry);
    }
    return all;
}

const FunctionEntry* FindFunction(const QString& name) {
    static const FunctionTable table = AllFunctions();
    return table.value(name.toLower());
}

// The word that stands for a date part: a bare name, which the parser takes for a column.
QString WordOf(const tsql::Expression& argument) {
    if (argument.kind != tsql::ExpressionKind::Column) return {};
    const tsql::ObjectName& name = static_cast<const tsql::ColumnName&>(argument).name;
    return name.schema.isEmpty() ? name.name : QString();
}

void CheckCount(const FunctionEntry& entry, const tsql::Function& function) {
    const size_t count = function.arguments.size();
    if (count >= entry.least && count <= entry.most) return;
    const QString name = function.name.toLower();
    if (entry.least == entry.most) throw SqlError(174, {name, QString::number(entry.least)});
    throw SqlError(189, {name, QString::number(entry.least), QString::number(entry.most)});
}

}  // namespace

SqlValue BoundCall::Evaluate(const Evaluation& evaluation) const {
    std::array<SqlValue, 8> few;
    std::vector<SqlValue> many;
    SqlValue* arguments = few.data();
    if (parts.size() > few.size()) {
        many.resize(parts.size());
        arguments = many.data();
    }
    for (size_t i = 0; i < parts.size(); ++i) {
        arguments[i] = parts[i]->Evaluate(evaluation);
        if (arguments[i].IsNull() && !takesNull_) return {};
    }
    return compute_(*this, arguments, evaluation);
}

std::string BoundCall::Detail() const {
    return std::to_string(reinterpret_cast<uintptr_t>(compute_)) + ':' + std::to_string(option);
}

BoundPtr BindScalarFunction(const tsql::Function& function, ExpressionBinder& binder) {
    const FunctionEntry* entry = FindFunction(function.name);
    if (!entry) {
        throw SqlError(195, {function.name, QStringLiteral("built-in function name")});
    }
    CheckCount(*entry, function);
    std::vector<BoundPtr> arguments;
    for (size_t i = entry->bindWord ? 1 : 0; i < function.arguments.size(); ++i) {
        arguments.push_back(binder.Value(*function.arguments[i]));
    }
    if (!entry->bindWord) return entry->bind(std::move(arguments));
    return entry->bindWord(function.name.toLower(), WordOf(*function.arguments.front()),
                           std::move(arguments));
}

}  // namespace quarv::localdb::engine
