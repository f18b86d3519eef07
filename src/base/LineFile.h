// LineFile: how files of lines get to and from the disk, in UTF-8, with every failure raised as a
// RuntimeError that names the file. It knows nothing of what the lines mean.
#pragma once

#include <QString>

namespace quarv {

class LineFile {
  public:
    // A larger file is refused rather than read into memory.
    static constexpr qint64 MaxBytes = 64 * 1024 * 1024;

    // Deletes a regular file that is there; false where it is still there afterwards.
    static bool Delete(const QString& path);

    // Both raise PermissionDenied where the system refuses access, else PathFileAccess; Read also
    // where the file is no UTF-8 or larger than MaxBytes. A byte order mark is left out.
    static void Write(const QString& path, const QString& text);
    static QString Read(const QString& path);
};

}  // namespace quarv
