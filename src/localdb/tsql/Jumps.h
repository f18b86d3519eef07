// Jumps: labels and GOTO, and what BREAK, CONTINUE and THROW need to know of their place. One a
// batch, kept by its TokenReader; a label or a GOTO may stand before or behind the other, so they
// are joined at the batch's end.
#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "localdb/tsql/Statement.h"
#include "localdb/tsql/Token.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct Label : Statement {
    Label() : Statement(StatementType::Label) {}
    QString name;
    // The statements around it, the outermost first, and itself: the way in for a jump.
    std::vector<const Statement*> path;
};

struct Goto : Statement {
    Goto() : Statement(StatementType::Goto) {}
    const Label* target = nullptr;  // never nothing once the batch was parsed
};

class Jumps {
  public:
    enum class Place : uint8_t { Block, Loop, Try, Catch };

    // Statements parsed while it lives stand inside `around`.
    class Inside;

    bool InLoop() const { return loops_ > 0; }
    bool InCatch() const { return catches_ > 0; }

    // Raises SyntaxError 132 where the name was declared before.
    void Declare(Label& label, const Token& at);
    void Await(Goto& jump, const Token& name);
    // At the batch's end. Raises SyntaxError 133 and 1026.
    void Join();

  private:
    struct Level {
        const Statement* statement;
        Place place;
    };
    struct Waiting {
        Goto* jump;
        Token name;
        std::vector<const Statement*> scopes;  // the TRY and CATCH blocks around it
    };

    std::vector<const Statement*> Scopes() const;

    std::vector<Level> around_;
    int loops_ = 0;
    int catches_ = 0;
    struct Declared {
        const Label* label;
        std::vector<const Statement*> scopes;
    };
    QHash<QString, Declared> labels_;  // by name in lower case
    std::vector<Waiting> waiting_;
};

class Jumps::Inside {
  public:
    Inside(Jumps& jumps, const Statement& around, Place place = Place::Block);
    ~Inside();
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

  private:
    Jumps& jumps_;
    Place place_;
};

// name:
StatementPtr ParseLabel(TokenReader& reader);
StatementPtr ParseGoto(TokenReader& reader);

}  // namespace quarv::localdb::tsql
