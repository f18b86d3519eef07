#include "localdb/engine/Functions.h"

#include <QHash>
#include <algorithm>
#include <array>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using FunctionTable = QHash<QString, const FunctionEntry*>;

FunctionTable AllFunctions() {
    FunctionTable all;
    for (const auto& table :
         {TextFunctions(), TextEditFunctions(), TextSearchFunctions(), NumberFunctions(),
          MathFunctions(), DateFunctions(), DateMakers(), ChoiceFunctions(), SystemFunctions(),
          HashFunctions(), MetadataFunctions(), ServerFunctions(), BitFunctions(), DateBuckets(),
          FormatFunctions(), SessionFunctions()}) {
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

// False where the answer depends on the language, the session or the catalogue.
bool IsSteadyFunction(QStringView name) {
    constexpr std::array<QStringView, 32> Names = {u"datename",
                                                   u"format",
                                                   u"parsename",
                                                   u"isdate",
                                                   u"db_name",
                                                   u"db_id",
                                                   u"object_id",
                                                   u"object_name",
                                                   u"schema_name",
                                                   u"schema_id",
                                                   u"type_name",
                                                   u"type_id",
                                                   u"col_name",
                                                   u"col_length",
                                                   u"object_schema_name",
                                                   u"object_definition",
                                                   u"objectproperty",
                                                   u"objectpropertyex",
                                                   u"columnproperty",
                                                   u"indexproperty",
                                                   u"indexkey_property",
                                                   u"index_col",
                                                   u"ident_current",
                                                   u"ident_seed",
                                                   u"ident_incr",
                                                   u"user_id",
                                                   u"user_name",
                                                   u"is_member",
                                                   u"rowcount_big",
                                                   u"connectionproperty",
                                                   u"min_active_rowversion",
                                                   u"has_perms_by_name"};
    return std::find(Names.begin(), Names.end(), name) == Names.end();
}

// The functions of texts that take none of text, ntext and image.
void CheckLongTexts(const FunctionEntry& entry, const std::vector<BoundPtr>& arguments) {
    constexpr std::array<QStringView, 19> Names = {
        u"len",   u"left",    u"right",     u"upper",      u"lower",    u"ltrim",     u"rtrim",
        u"trim",  u"reverse", u"replicate", u"stuff",      u"replace",  u"translate", u"charindex",
        u"ascii", u"unicode", u"soundex",   u"difference", u"quotename"};
    if (std::find(Names.begin(), Names.end(), entry.name) == Names.end()) return;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const SqlType& type = arguments[i]->type;
        if (!IsOldLong(type.kind)) continue;
        throw SqlError(8116, {type.Name(), QString::number(i + 1), entry.name.toString()});
    }
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
        if (IsRefusedFunction(function.name)) throw SqlError(40517, {function.name.toUpper()});
        throw SqlError(195, {function.name, QStringLiteral("built-in function name")});
    }
    CheckCount(*entry, function);
    std::vector<BoundPtr> arguments;
    for (size_t i = entry->bindWord ? 1 : 0; i < function.arguments.size(); ++i) {
        arguments.push_back(binder.Value(*function.arguments[i]));
    }
    CheckLongTexts(*entry, arguments);
    BoundPtr call = entry->bindWord
                        ? entry->bindWord(function.name.toLower(),
                                          WordOf(*function.arguments.front()), std::move(arguments))
                        : entry->bind(std::move(arguments));
    if (!IsSteadyFunction(entry->name)) {
        if (auto* made = dynamic_cast<BoundCall*>(call.get())) made->isDeterministic = false;
    }
    CheckCollation(call->Collates(), entry->name, ClassOf(call->type) != TypeClass::Text);
    return call;
}

}  // namespace quarv::localdb::engine
