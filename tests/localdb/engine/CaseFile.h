// CaseFile: the T-SQL cases of tests/localdb/tsql/cases, read from their text files. The format is
// told in that folder's README. Knows nothing of how a case is run.
#pragma once

#include <QStringList>
#include <vector>

namespace quarv::localdb::engine {

struct Case {
    QString file;  // without its folder
    QString name;
    int line = 0;       // 1-based, of its name
    QStringList setup;  // batches
    QStringList batches;
    QStringList expected;  // lines
};

// Those of every *.txt in the folder, by file name, then in the order of the file. A file that
// cannot be read has none.
std::vector<Case> ReadCases(const QString& directory);

}  // namespace quarv::localdb::engine
