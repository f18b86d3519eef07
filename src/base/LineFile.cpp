#include "base/LineFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "base/RUtils.h"
#include "base/RuntimeError.h"

namespace quarv {

namespace {

[[noreturn]] void Refuse(const QString& path, const QString& reason) {
    throw RuntimeError(RuntimeError::PathFileAccess, path + QStringLiteral(": ") + reason);
}

// QFile calls every refused open a failure of opening, so whether it was for lack of rights is
// asked of the file system.
bool Forbidden(const QString& path, QIODevice::OpenMode mode) {
    const QFileInfo file(path);
    if (mode & QIODevice::ReadOnly) return file.isFile() && !file.isReadable();
    const QFileInfo folder(file.absolutePath());
    return file.exists() ? file.isFile() && !file.isWritable()
                         : folder.isDir() && !folder.isWritable();
}

void Open(QFile& file, QIODevice::OpenMode mode) {
    const QString path = file.fileName();
    // Qt would take these two with a warning instead of an error text.
    if (path.isEmpty()) Refuse(path, QStringLiteral("no file name"));
    if (path.contains(QChar::Null)) {
        Refuse(TrimAtNull(path), QStringLiteral("the name holds a character of code 0"));
    }
    if (file.open(mode)) return;
    if (Forbidden(path, mode)) throw RuntimeError(RuntimeError::PermissionDenied, path);
    Refuse(path, file.errorString());
}

}  // namespace

bool LineFile::Delete(const QString& path) {
    if (FileExists(path)) QFile::remove(path);
    return !FileExists(path);
}

void LineFile::Write(const QString& path, const QString& text) {
    QFile file(path);
    Open(file, QIODevice::WriteOnly | QIODevice::Truncate);
    const QByteArray bytes = text.toUtf8();
    if (file.write(bytes) != bytes.size() || !file.flush()) Refuse(path, file.errorString());
    file.close();
    if (file.error() != QFileDevice::NoError) Refuse(path, file.errorString());
}

QString LineFile::Read(const QString& path) {
    QFile file(path);
    Open(file, QIODevice::ReadOnly);
    if (file.size() > MaxBytes) Refuse(path, QStringLiteral("larger than 64 MiB"));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) Refuse(path, file.errorString());
    // Stateless: a sequence that the end of the file cuts off is an error, not a state to keep.
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = decoder(bytes);
    if (decoder.hasError()) Refuse(path, QStringLiteral("the file is no UTF-8 text"));
    return text;
}

}  // namespace quarv
