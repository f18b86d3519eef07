#include "query/ScriptBatches.h"

#include "base/RuntimeError.h"

namespace quarv {

namespace {

constexpr QStringView LineEnd = u"\r\n";

const QString& Line(const StringList& lines, int index) {
    return lines.Items(static_cast<qint16>(index));
}

}  // namespace

bool ScriptBatches::IsSeparator(const QString& line) {
    return line.startsWith(QStringView(u"GO"), Qt::CaseInsensitive);
}

int ScriptBatches::Count() const {
    int count = 0;
    for (int i = 1; i <= lines_.Count(); ++i)
        if (IsSeparator(Line(lines_, i))) ++count;
    return count;
}

QString ScriptBatches::Next() {
    // The length first: a batch may hold most of a large file, which growing would copy again.
    qsizetype length = 0;
    int end = line_;
    for (; end <= lines_.Count() && !IsSeparator(Line(lines_, end)); ++end)
        length += Line(lines_, end).size() + LineEnd.size();
    if (end > lines_.Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    QString batch;
    batch.reserve(length);
    for (; line_ < end; ++line_) batch.append(Line(lines_, line_)).append(LineEnd);
    ++line_;
    return batch;
}

}  // namespace quarv
