#include "base/LineFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QtEndian>
#include <algorithm>
#include <type_traits>

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

// Calls `use` with each line of the text.
template <typename View, typename Use>
void ForEachLine(View text, Use use) {
    const auto find = [text](char unit, qsizetype from) {
        const qsizetype at =
            text.indexOf(std::remove_const_t<typename View::value_type>(unit), from);
        return at < 0 ? text.size() : at;
    };
    // Each is looked for again only once it was passed: a text may hold none of one of them.
    qsizetype cr = -1;
    qsizetype lf = -1;
    for (qsizetype start = 0; start < text.size();) {
        if (cr < start) cr = find('\r', start);
        if (lf < start) lf = find('\n', start);
        const qsizetype end = std::min(cr, lf);
        use(text.sliced(start, end - start));
        start = end + (lf == cr + 1 ? 2 : 1);
    }
}

// Makes lines of the bytes of one file. Those of UTF-8 are decoded one by one, so that no second
// copy of the whole is needed.
class Lines {
  public:
    Lines(const QString& path, int most) : path_(path), most_(static_cast<std::size_t>(most)) {}

    void ReadUtf8(QByteArrayView bytes) {
        if (bytes.contains('\0')) RefuseNull();
        for (const QByteArrayView line : Parted(bytes)) {
            // Stateless: a sequence that the end of a line cuts off is an error, not a state to
            // keep. The file's own mark is gone, and no other character is one.
            QStringDecoder decoder(
                QStringConverter::Utf8,
                QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
            lines_.push_back(decoder(line));
            if (decoder.hasError()) RefuseBytes();
        }
    }

    // UTF-32 begins like UTF-16; what stands behind its mark, a character of code 0, is refused.
    template <void ToNative(const void*, qsizetype, void*)>
    void ReadUtf16(QByteArrayView bytes) {
        if (bytes.size() % 2 != 0) RefuseBytes();
        QString text(bytes.size() / 2, Qt::Uninitialized);
        ToNative(bytes.data(), text.size(), text.data());
        if (!text.isValidUtf16()) RefuseBytes();
        if (text.contains(QChar::Null)) RefuseNull();
        for (const QStringView line : Parted(QStringView(text))) lines_.push_back(line.toString());
    }

    std::vector<QString> Take() { return std::move(lines_); }

  private:
    // Where the lines are; nothing of them is copied before all are known to fit.
    template <typename View>
    std::vector<View> Parted(View text) {
        std::vector<View> views;
        ForEachLine(text, [&](View line) {
            if (views.size() == most_) {
                throw RuntimeError(RuntimeError::Overflow,
                                   path_ + QStringLiteral(": more than %1 lines").arg(most_));
            }
            views.push_back(line);
        });
        lines_.reserve(views.size());
        return views;
    }

    [[noreturn]] void RefuseBytes() const {
        Refuse(path_, QStringLiteral("the file is neither UTF-8 nor marked UTF-16 text"));
    }
    [[noreturn]] void RefuseNull() const {
        Refuse(path_, QStringLiteral("the file is no text: it holds a character of code 0"));
    }

    const QString& path_;
    std::size_t most_;
    std::vector<QString> lines_;
};

struct Mark {
    QByteArrayView bytes;
    void (Lines::*read)(QByteArrayView behindIt);
};

constexpr Mark Marks[] = {
    {"\xff\xfe", &Lines::ReadUtf16<qFromLittleEndian<char16_t>>},
    {"\xfe\xff", &Lines::ReadUtf16<qFromBigEndian<char16_t>>},
    {"\xef\xbb\xbf", &Lines::ReadUtf8},
    {"", &Lines::ReadUtf8},
};

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

std::vector<QString> LineFile::Read(const QString& path, int mostLines) {
    QFile file(path);
    Open(file, QIODevice::ReadOnly);
    if (file.size() > MaxBytes) Refuse(path, QStringLiteral("larger than 64 MiB"));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) Refuse(path, file.errorString());
    Lines lines(path, mostLines);
    const Mark& mark = *std::find_if(std::begin(Marks), std::end(Marks), [&](const Mark& each) {
        return bytes.startsWith(each.bytes);
    });
    (lines.*mark.read)(QByteArrayView(bytes).sliced(mark.bytes.size()));
    return lines.Take();
}

}  // namespace quarv
