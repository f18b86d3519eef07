// SyntaxError: what is wrong with a batch before anything of it runs: the server's message number,
// what goes into the message's gaps, and the place. The engine's error table has the texts.
#pragma once

#include <QStringList>

#include "base/Error.h"

namespace quarv::localdb::tsql {

class SyntaxError : public Error {
  public:
    enum Code : int {
        Near = 102,
        IdentifierTooLong = 103,
        UnclosedQuote = 105,
        MustBeFirst = 111,
        MissingCommentEnd = 113,
        LabelTwice = 132,
        LabelMissing = 133,
        BreakOutsideLoop = 135,
        ContinueOutsideLoop = 136,
        NearKeyword = 156,
        TooDeep = 191,
        RecursionLimit = 310,
        WithoutSemicolon = 319,
        JumpIntoTry = 1026,
        EmptyName = 1038,
        TooManyItems = 1056,
        NotACondition = 4145,
        TooComplex = 8623,
        ThrowOutsideCatch = 10704,
        TooManyRows = 10738,
        Unsupported = 40517,
    };

    // `line` and `column` are 1-based.
    SyntaxError(int number, QStringList inserts, int line, int column);

    const QStringList& Inserts() const { return inserts_; }
    int Line() const { return line_; }
    int Column() const { return column_; }

  private:
    QStringList inserts_;
    int line_;
    int column_;
};

}  // namespace quarv::localdb::tsql
