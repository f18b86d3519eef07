// ScriptFile: a script on the disk for as long as the object lives.
#pragma once

#include <QFile>
#include <QTemporaryDir>

namespace quarv::test {

class ScriptFile {
  public:
    explicit ScriptFile(const QByteArray& bytes) {
        QFile file(Path());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no folder for a script");
    }

    QString Path() const { return folder_.filePath(QStringLiteral("script.sql")); }

  private:
    QTemporaryDir folder_;
};

}  // namespace quarv::test
