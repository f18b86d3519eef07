// SampleScript: the T-SQL that fills the sample database. The database itself is made by whoever
// runs the script.
#pragma once

#include <QString>
#include <QStringList>

namespace quarv::localdb::sample {

// The whole script, its batches separated by lines that read "GO".
QString SampleScript();
// The same, split into the batches to run one after another.
QStringList SampleBatches();

}  // namespace quarv::localdb::sample
