#include "localdb/engine/Functions.h"

#include <array>

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

const FunctionEntry* FindFunction(const QString& name) {
    for (const auto& table : {TextFunctions(), NumberFunctions(), SystemFunctions()}) {
        for (const FunctionEntry& entry : table) {
            if (entry.name.compare(name, Qt::CaseInsensitive) == 0) return &entry;
        }
    }
    return nullptr;
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
    return std::to_string(reinterpret_cast<uintptr_t>(compute_));
}

BoundPtr BindScalarFunction(const tsql::Function& function, ExpressionBinder& binder) {
    const FunctionEntry* entry = FindFunction(function.name);
    if (!entry) {
        throw SqlError(195, {function.name, QStringLiteral("built-in function name")});
    }
    const size_t count = function.arguments.size();
    if (count < entry->least || count > entry->most) {
        const QString name = function.name.toLower();
        if (entry->least == entry->most) {
            throw SqlError(174, {name, QString::number(entry->least)});
        }
        throw SqlError(189, {name, QString::number(entry->least), QString::number(entry->most)});
    }
    std::vector<BoundPtr> arguments;
    for (const tsql::ExpressionPtr& argument : function.arguments) {
        arguments.push_back(binder.Value(*argument));
    }
    return entry->bind(std::move(arguments));
}

}  // namespace quarv::localdb::engine
