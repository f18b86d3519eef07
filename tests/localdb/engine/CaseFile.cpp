#include "CaseFile.h"

#include <QDir>
#include <QFile>

namespace quarv::localdb::engine {

namespace {

QStringList SplitBatches(const QStringList& lines) {
    QStringList batches;
    QStringList batch;
    for (const QString& line : lines) {
        if (line == u"GO") {
            batches += batch.join(u'\n');
            batch.clear();
        } else {
            batch += line;
        }
    }
    batches += batch.join(u'\n');
    return batches;
}

class Reader {
  public:
    explicit Reader(const QString& path) : path_(path) {}

    std::vector<Case> Read() {
        QFile file(path_);
        if (!file.open(QIODevice::ReadOnly)) return {};
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        lines += QStringLiteral("## end");
        int number = 0;
        for (const QString& line : lines) Take(line, ++number);
        return cases_;
    }

  private:
    void Take(const QString& line, int number) {
        if (line.startsWith(QStringLiteral("## "))) {
            Finish();
            name_ = line.mid(3);
            line_ = number;
            input_.clear();
            expected_.clear();
            inExpected_ = false;
        } else if (line == u"----") {
            inExpected_ = true;
        } else if (inExpected_) {
            if (!line.isEmpty()) expected_ += line;
        } else {
            input_ += line;
        }
    }
    void Finish() {
        if (name_ == u"setup") {
            setup_ = SplitBatches(input_);
        } else if (!name_.isEmpty()) {
            cases_.push_back({QFileInfo(path_).fileName(), name_, line_, setup_,
                              SplitBatches(input_), expected_});
        }
    }

    QString path_;
    QString name_;
    int line_ = 0;
    bool inExpected_ = false;
    QStringList input_, expected_, setup_;
    std::vector<Case> cases_;
};

}  // namespace

std::vector<Case> ReadCases(const QString& directory) {
    std::vector<Case> all;
    const QDir folder(directory);
    for (const QString& name : folder.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
        for (const Case& c : Reader(folder.filePath(name)).Read()) all.push_back(c);
    }
    return all;
}

}  // namespace quarv::localdb::engine
