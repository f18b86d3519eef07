#include "query/ScriptRunner.h"

#include "base/RuntimeError.h"
#include "base/StringList.h"
#include "platform/ado/BatchErrors.h"
#include "query/ScriptBatches.h"

namespace quarv {

namespace {

class NoTimeLimit {
  public:
    explicit NoTimeLimit(ado::Connection& connection)
        : connection_(connection), before_(connection.CommandTimeout()) {
        connection_.SetCommandTimeout(0);
    }
    ~NoTimeLimit() { connection_.SetCommandTimeout(before_); }
    NoTimeLimit(const NoTimeLimit&) = delete;
    NoTimeLimit& operator=(const NoTimeLimit&) = delete;

  private:
    ado::Connection& connection_;
    int before_;
};

void Load(StringList& lines, const QString& path) {
    if (!lines.LoadFromFile(path)) throw RuntimeError(RuntimeError::FileNotFound, path);
    if (lines.Count() == StringList::MaxCount) {
        throw RuntimeError(
            RuntimeError::Overflow,
            path + QStringLiteral(": more than %1 lines").arg(StringList::MaxCount - 1));
    }
    // So that the last batch is run whether or not the file ends it.
    lines.Add(QStringLiteral("GO"));
}

}  // namespace

void ScriptRunner::Run(const QString& path, const Progress& progress) {
    StringList lines;
    Load(lines, path);
    ScriptBatches batches(lines);
    const int total = batches.Count();
    const NoTimeLimit unlimited(*connection_);
    if (progress) progress(0, total);
    for (int done = 1; done <= total; ++done) {
        RunBatch(batches.Next());
        if (progress) progress(done, total);
    }
}

// The server runs a batch on behind a failed statement, as it does where the first one fails; to
// give the results up at the first error would cancel the rest at some place that nobody can name.
void ScriptRunner::RunBatch(const QString& batch) {
    ado::DataErrors errors = ado::ErrorsOfRest(*connection_, connection_->Execute(batch));
    if (errors.empty()) return;
    const DataError first = errors.front();
    errors.pop_front();
    throw ado::WithLater(first, errors);
}

}  // namespace quarv
