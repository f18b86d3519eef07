#include "localdb/sample/SampleScript.h"

#include <QFile>

// The resource lives in a static library, whose initialiser must be called by name, outside of any
// namespace.
static void InitialiseResource() {
    Q_INIT_RESOURCE(sample);
}

namespace quarv::localdb::sample {

QString SampleScript() {
    InitialiseResource();
    QFile file(QStringLiteral(":/sample/mirel.sql"));
    if (!file.open(QIODevice::ReadOnly)) qFatal("the sample's script was not linked in");
    return QString::fromUtf8(file.readAll());
}

QStringList SampleBatches() {
    QStringList batches;
    QString batch;
    for (const QString& line : SampleScript().split(u'\n')) {
        if (line.trimmed() == u"GO") {
            batches += batch;
            batch.clear();
        } else {
            batch += line + u'\n';
        }
    }
    if (!batch.trimmed().isEmpty()) batches += batch;
    return batches;
}

}  // namespace quarv::localdb::sample
