// ScriptRunner: runs a script file of several batches on a connection that it shares, one batch
// after another, and throws away what rows they give. It knows no window: whoever shows how far it
// is hands in a callback.
#pragma once

#include <QString>
#include <functional>

#include "platform/ado/Connection.h"

namespace quarv {

class StringList;

class ScriptRunner {
  public:
    // How many batches have run, and how many there are.
    using Progress = std::function<void(int done, int total)>;

    explicit ScriptRunner(ado::ConnectionPtr connection) : connection_(std::move(connection)) {}

    // Runs the batches of the file, which ScriptBatches parts, and one more behind the last
    // separator, each to its end; `progress` is told before the first and after each. A batch has
    // no time limit; the connection's own is set again afterwards.
    //
    // Raises FileNotFound where there is no such file, what StringList::LoadFromFile raises, and
    // Overflow where the list has no room for the last separator; then nothing was sent. Raises the
    // first error of a batch, which tells of its later ones too, and what `progress` raises; then
    // no later batch is sent, and what ran before stays done.
    void Run(const QString& path, const Progress& progress = {});

  private:
    void RunBatch(const QString& batch);

    ado::ConnectionPtr connection_;
};

}  // namespace quarv
