// QtWarnings: Qt's own warnings count as failures of the test during which they were logged.
#pragma once

#include <QString>
#include <QStringList>

namespace quarv::test {

// From now to the end of the running test a warning that contains `part` is no failure.
void AllowQtWarning(const QString& part);

// Takes the unexpected warnings logged since the last call, and ends what AllowQtWarning allowed.
QStringList TakeUnexpectedQtWarnings();

void CatchQtWarnings();

}  // namespace quarv::test
