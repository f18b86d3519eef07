// MessageFormat: the texts of RAISERROR and FORMATMESSAGE with their printf-like formats filled in
// ("RAISERROR", Arguments). Knows no session.
#pragma once

#include <QStringList>
#include <vector>

#include "localdb/engine/MessageTable.h"
#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"

namespace quarv::localdb::engine {

struct FormatArgument {
    SqlType type;
    OwnedValue value;
};

class MessageFormat {
  public:
    static constexpr qsizetype MaxLength = 2047;  // UTF-16 units of a message
    static constexpr size_t MaxArguments = 20;
    static constexpr int FirstNumber = 13000;  // of the messages that RAISERROR may raise
    static constexpr int UserError = 50000;    // the number of a text of one's own

    static bool IsRaisable(int64_t number) { return number >= FirstNumber && number != UserError; }
    // Nothing where there is no such message, or none that may be raised.
    static const MessageText* FindRaisable(int64_t number);

    // Raises SqlError 2747, and 2748 naming the place from `firstPlace` on.
    static void CheckArguments(const std::vector<FormatArgument>& arguments, int firstPlace);
    // Raises SqlError 2786 and 2787. The result is cut as Cut does.
    static QString Fill(const QString& format, const std::vector<FormatArgument>& arguments);
    // The arguments as they stand in a numbered message's gaps.
    static QStringList Plain(const std::vector<FormatArgument>& arguments);
    // A text beyond MaxLength ends in an ellipsis.
    static QString Cut(const QString& text);
};

}  // namespace quarv::localdb::engine
