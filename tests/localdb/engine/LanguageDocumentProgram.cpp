// tsql_document CASES FILE: writes the page of the local server's language. With --check before the
// two it compares instead: 0 where the file is what it would write, else 1.
#include <QFile>
#include <QTextStream>

#include "LanguageDocument.h"

namespace {

int Fail(const QString& what) {
    QTextStream(stderr) << "tsql_document: " << what << '\n';
    return 1;
}

int Check(const QByteArray& page, QFile& file) {
    if (!file.open(QIODevice::ReadOnly)) return Fail(file.errorString());
    if (file.readAll() == page) return 0;
    return Fail(QStringLiteral("%1 is not what the cases say; scripts/tsql-doc makes it anew")
                    .arg(file.fileName()));
}

int Write(const QByteArray& page, QFile& file) {
    const bool written = file.open(QIODevice::WriteOnly) && file.write(page) == page.size();
    return written && file.flush() ? 0 : Fail(file.errorString());
}

}  // namespace

int main(int argc, char** argv) {
    const bool check = argc == 4 && qstrcmp(argv[1], "--check") == 0;
    if (argc != 3 && !check) {
        return Fail(QStringLiteral("usage: tsql_document [--check] CASES FILE"));
    }
    const auto cases = quarv::localdb::engine::ReadCases(QString::fromLocal8Bit(argv[argc - 2]));
    if (cases.empty()) return Fail(QStringLiteral("no cases found"));
    const QByteArray page = quarv::localdb::engine::LanguageDocument(cases).toUtf8();
    QFile file(QString::fromLocal8Bit(argv[argc - 1]));
    return check ? Check(page, file) : Write(page, file);
}
