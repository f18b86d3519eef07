// Environment: what expressions can ask of the session that runs them. Implemented by the session's
// running frame.
#pragma once

#include <QString>
#include <optional>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"

namespace quarv::localdb::engine {

// The system's values and functions without arguments.
enum class SystemValue : uint8_t {
    Version,
    Spid,
    RowCount,
    Error,
    TranCount,
    Identity,
    ScopeIdentity,
    ServerName,
    ServiceName,
    Language,
    LanguageId,
    MaxPrecision,
    NestLevel,
    TextSize,
    LockTimeout,
    DateFirst,
    Options,
    ProcId,
    Now,
    UtcNow,
    FullNow,     // datetime2(7)
    FullUtcNow,  // datetime2(7)
    OffsetNow,   // datetimeoffset(7)
    DatabaseName,
    DatabaseId,
    LoginName,
    UserName,
    HostName,
    AppName,
    ErrorNumber,  // this and the next five are null outside a CATCH block
    ErrorSeverity,
    ErrorState,
    ErrorLine,
    ErrorProcedure,
    ErrorMessage,
    TransactionState,  // XACT_STATE()
    ContextInfo,
    LastRowVersion,  // eight bytes
};

class Metadata;

class Environment {
  public:
    virtual ~Environment() = default;

    // The value of a declared variable, by its index.
    virtual SqlValue VariableValue(size_t index) const = 0;
    // Gives a declared variable a value of its type while a statement runs.
    virtual void AssignVariable(size_t index, const SqlValue& value) const = 0;
    // The same within one statement. The text lives as long as the statement.
    virtual SqlValue Ask(SystemValue what) const = 0;
    // At least 0 and below 1; a seed starts the session's row of numbers anew.
    virtual double Random(std::optional<int64_t> seed) const = 0;
    // The catalogue of the database whose names are looked up.
    virtual Metadata Catalog() const = 0;
    // Null where there is no such object or database.
    virtual SqlValue ObjectId(const QString& name, const QString& type) const = 0;
    virtual SqlValue ObjectName(int64_t id) const = 0;
    virtual SqlValue DatabaseIdOf(const QString& name) const = 0;
    virtual SqlValue DatabaseNameOf(int64_t id) const = 0;
};

}  // namespace quarv::localdb::engine
