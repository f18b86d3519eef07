#include "localdb/engine/SystemVariables.h"

#include <array>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

struct Entry {
    QStringView name;
    SystemValue what;
};

constexpr std::array<Entry, 18> Table = {{{u"@@version", SystemValue::Version},
                                          {u"@@spid", SystemValue::Spid},
                                          {u"@@rowcount", SystemValue::RowCount},
                                          {u"@@error", SystemValue::Error},
                                          {u"@@trancount", SystemValue::TranCount},
                                          {u"@@identity", SystemValue::Identity},
                                          {u"@@servername", SystemValue::ServerName},
                                          {u"@@servicename", SystemValue::ServiceName},
                                          {u"@@language", SystemValue::Language},
                                          {u"@@max_precision", SystemValue::MaxPrecision},
                                          {u"@@nestlevel", SystemValue::NestLevel},
                                          {u"@@textsize", SystemValue::TextSize},
                                          {u"@@lock_timeout", SystemValue::LockTimeout},
                                          {u"@@datefirst", SystemValue::DateFirst},
                                          {u"@@options", SystemValue::Options},
                                          {u"@@procid", SystemValue::ProcId},
                                          {u"@@langid", SystemValue::LanguageId},
                                          {u"@@dbts", SystemValue::LastRowVersion}}};

SqlType TypeOf(SystemValue what) {
    switch (what) {
        case SystemValue::Version:
            return MakeType(TypeKind::NVarChar, 300);
        case SystemValue::ServerName:
        case SystemValue::ServiceName:
        case SystemValue::Language:
        case SystemValue::DatabaseName:
        case SystemValue::LoginName:
        case SystemValue::UserName:
        case SystemValue::HostName:
        case SystemValue::AppName:
        case SystemValue::ErrorProcedure:
            return SysnameType();
        case SystemValue::ErrorMessage:
            return MakeType(TypeKind::NVarChar, 4000);
        case SystemValue::ContextInfo:
            return MakeType(TypeKind::VarBinary, 128);
        case SystemValue::TransactionState:
            return MakeType(TypeKind::SmallInt);
        case SystemValue::Spid:
        case SystemValue::LanguageId:
            return MakeType(TypeKind::SmallInt);
        case SystemValue::Identity:
        case SystemValue::ScopeIdentity:
            return MakeType(TypeKind::Numeric, 0, 38, 0);
        case SystemValue::MaxPrecision:
        case SystemValue::DateFirst:
            return MakeType(TypeKind::TinyInt);
        case SystemValue::LastRowVersion:
            return MakeType(TypeKind::VarBinary, 8);
        case SystemValue::Now:
        case SystemValue::UtcNow:
            return MakeType(TypeKind::DateTime);
        case SystemValue::FullNow:
        case SystemValue::FullUtcNow:
            return MakeType(TypeKind::DateTime2, 0, 0, 7);
        case SystemValue::OffsetNow:
            return MakeType(TypeKind::DateTimeOffset, 0, 0, 7);
        default:
            return IntType();
    }
}

bool IsNullable(SystemValue what) {
    switch (what) {
        case SystemValue::Identity:
        case SystemValue::ScopeIdentity:
        case SystemValue::ErrorNumber:
        case SystemValue::ErrorSeverity:
        case SystemValue::ErrorState:
        case SystemValue::ErrorLine:
        case SystemValue::ErrorProcedure:
        case SystemValue::ErrorMessage:
        case SystemValue::ContextInfo:
            return true;
        default:
            return false;
    }
}

}  // namespace

BoundPtr MakeSystemValue(SystemValue what) {
    auto node = std::make_unique<BoundSystemValue>(what, TypeOf(what));
    node->nullable = IsNullable(what);
    return node;
}

BoundPtr BindSystemVariable(const QString& name) {
    for (const Entry& entry : Table) {
        if (entry.name.compare(name, Qt::CaseInsensitive) == 0) return MakeSystemValue(entry.what);
    }
    throw SqlError(137, {name});
}

}  // namespace quarv::localdb::engine
