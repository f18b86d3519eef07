#include <array>

#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/MessageFormat.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemVariables.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

template <SystemValue What>
BoundPtr BindSystemValue(Arguments) {
    return MakeSystemValue(What);
}

BoundPtr BindDatabaseFunction(Arguments arguments, bool byName) {
    if (arguments.empty()) {
        return MakeSystemValue(byName ? SystemValue::DatabaseId : SystemValue::DatabaseName);
    }
    BoundCall::Compute compute =
        byName ? BoundCall::Compute([](const BoundCall&, const SqlValue* a, const Evaluation& e) {
            return e.environment->DatabaseIdOf(FromUtf8(a[0].text));
        })
               : BoundCall::Compute([](const BoundCall&, const SqlValue* a, const Evaluation& e) {
                     return e.environment->DatabaseNameOf(a[0].integer);
                 });
    auto call = std::make_unique<BoundCall>(compute, false);
    call->type = byName ? MakeType(TypeKind::SmallInt) : SysnameType();
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]),
                                             byName ? SysnameType() : MakeType(TypeKind::BigInt));
    call->parts = std::move(arguments);
    return call;
}

BoundPtr BindDbName(Arguments arguments) {
    return BindDatabaseFunction(std::move(arguments), false);
}

BoundPtr BindDbId(Arguments arguments) {
    return BindDatabaseFunction(std::move(arguments), true);
}

SqlValue ObjectIdOf(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const QString type = call.parts.size() > 1 ? FromUtf8(a[1].text) : QString();
    return evaluation.environment->ObjectId(FromUtf8(a[0].text), type);
}

BoundPtr BindObjectId(Arguments arguments) {
    auto call = std::make_unique<BoundCall>(ObjectIdOf, false);
    call->type = IntType();
    for (BoundPtr& argument : arguments) {
        argument =
            ExpressionBinder::Convert(std::move(argument), MakeType(TypeKind::NVarChar, 600));
    }
    call->parts = std::move(arguments);
    return call;
}

SqlValue ObjectNameOf(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    return evaluation.environment->ObjectName(a[0].integer);
}

BoundPtr BindObjectName(Arguments arguments) {
    auto call = std::make_unique<BoundCall>(ObjectNameOf, false);
    call->type = SysnameType();
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), MakeType(TypeKind::BigInt));
    call->parts = std::move(arguments);
    return call;
}

// FORMATMESSAGE of a number knows the messages that RAISERROR may raise, of a text its formats.
SqlValue FormatMessage(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    constexpr int FirstArgument = 2;
    if (a[0].IsNull()) return {};
    std::vector<FormatArgument> arguments;
    for (size_t i = 1; i < call.parts.size(); ++i) {
        arguments.push_back({call.parts[i]->type, OwnedValue(a[i])});
    }
    MessageFormat::CheckArguments(arguments, FirstArgument);
    if (ClassOf(call.parts[0]->type) == TypeClass::Text) {
        const QString text = MessageFormat::Fill(FromUtf8(a[0].text), arguments);
        return SqlValue::Text(evaluation.arena->Keep(ToUtf8(text)));
    }
    const MessageText* entry = MessageFormat::FindRaisable(a[0].integer);
    if (!entry) return {};
    const QString text = MessageFormat::Cut(FillMessage(*entry, MessageFormat::Plain(arguments)));
    return SqlValue::Text(evaluation.arena->Keep(ToUtf8(text)));
}

BoundPtr BindFormatMessage(Arguments arguments) {
    const SqlType& first = arguments[0]->type;
    const bool text = ClassOf(first) == TypeClass::Text;
    if (!text && first.kind != TypeKind::Int && first.kind != TypeKind::SmallInt &&
        first.kind != TypeKind::TinyInt) {
        throw SqlError(8116, {first.Name(), QStringLiteral("1"), QStringLiteral("FORMATMESSAGE")});
    }
    return MakeNullableCall(FormatMessage, MakeType(TypeKind::NVarChar, 2048), std::move(arguments),
                            true);
}

}  // namespace

std::span<const FunctionEntry> SystemFunctions() {
    static constexpr std::array<FunctionEntry, 29> Table = {{
        {u"getdate", 0, 0, BindSystemValue<SystemValue::Now>},
        {u"current_timestamp", 0, 0, BindSystemValue<SystemValue::Now>},
        {u"getutcdate", 0, 0, BindSystemValue<SystemValue::UtcNow>},
        {u"sysdatetime", 0, 0, BindSystemValue<SystemValue::FullNow>},
        {u"sysutcdatetime", 0, 0, BindSystemValue<SystemValue::FullUtcNow>},
        {u"sysdatetimeoffset", 0, 0, BindSystemValue<SystemValue::OffsetNow>},
        {u"db_name", 0, 1, BindDbName},
        {u"db_id", 0, 1, BindDbId},
        {u"object_id", 1, 2, BindObjectId},
        {u"object_name", 1, 1, BindObjectName},
        {u"suser_name", 0, 0, BindSystemValue<SystemValue::LoginName>},
        {u"suser_sname", 0, 0, BindSystemValue<SystemValue::LoginName>},
        {u"original_login", 0, 0, BindSystemValue<SystemValue::LoginName>},
        {u"system_user", 0, 0, BindSystemValue<SystemValue::LoginName>},
        {u"current_user", 0, 0, BindSystemValue<SystemValue::UserName>},
        {u"session_user", 0, 0, BindSystemValue<SystemValue::UserName>},
        {u"user", 0, 0, BindSystemValue<SystemValue::UserName>},
        {u"host_name", 0, 0, BindSystemValue<SystemValue::HostName>},
        {u"app_name", 0, 0, BindSystemValue<SystemValue::AppName>},
        {u"context_info", 0, 0, BindSystemValue<SystemValue::ContextInfo>},
        {u"error_line", 0, 0, BindSystemValue<SystemValue::ErrorLine>},
        {u"error_message", 0, 0, BindSystemValue<SystemValue::ErrorMessage>},
        {u"error_number", 0, 0, BindSystemValue<SystemValue::ErrorNumber>},
        {u"error_procedure", 0, 0, BindSystemValue<SystemValue::ErrorProcedure>},
        {u"error_severity", 0, 0, BindSystemValue<SystemValue::ErrorSeverity>},
        {u"error_state", 0, 0, BindSystemValue<SystemValue::ErrorState>},
        {u"xact_state", 0, 0, BindSystemValue<SystemValue::TransactionState>},
        {u"formatmessage", 1, 21, BindFormatMessage},
        {u"scope_identity", 0, 0, BindSystemValue<SystemValue::ScopeIdentity>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
