// ScriptBatches: the lines of a script, parted into the batches that go to the server one by one.
// The lines belong to the caller and outlive it unchanged. It knows no connection.
#pragma once

#include <QString>

#include "base/StringList.h"

namespace quarv {

class ScriptBatches {
  public:
    // A batch ends at its separator: what stands behind the last one is no batch, so the caller
    // appends one more to a script.
    explicit ScriptBatches(const StringList& lines) : lines_(lines) {}

    // A line that begins with "GO" in any letter case, whatever follows: GOTO parts, and so does a
    // comment behind it. Blanks before it are not skipped.
    static bool IsSeparator(const QString& line);

    // How many batches there are, empty ones included.
    int Count() const;

    // The next batch, each of its lines ended by CR LF; empty where no line stands before its
    // separator. Behind the last batch raises SubscriptOutOfRange.
    QString Next();

  private:
    const StringList& lines_;
    int line_ = 1;  // the first of the next batch
};

}  // namespace quarv
