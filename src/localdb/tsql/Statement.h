// Statement: the base of every statement's tree. Each kind has a file of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace quarv::localdb::tsql {

enum class StatementType : uint8_t {
    AlterDatabase,
    AlterIndex,
    AlterTable,
    Block,
    CreateDatabase,
    CreateIndex,
    CreateProcedure,
    CreateTable,
    CreateView,
    Declare,
    Delete,
    DropObject,
    Execute,
    Goto,
    If,
    Insert,
    Label,
    Print,
    RaiseError,
    Return,
    Schema,
    Select,
    SetOption,
    SetVariable,
    Throw,
    Transaction,
    Truncate,
    Try,
    Type,
    Update,
    Use,
    WaitFor,
    While,
    LoopJump,
};

struct Statement {
    const StatementType type;
    int line = 0;  // 1-based, of its first word

    virtual ~Statement() = default;

  protected:
    explicit Statement(StatementType t) : type(t) {}
};

using StatementPtr = std::unique_ptr<Statement>;
using StatementList = std::vector<StatementPtr>;

}  // namespace quarv::localdb::tsql
