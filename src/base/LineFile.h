// LineFile: how files of lines get to and from the disk, in UTF-8 or, where a byte order mark says
// so, from UTF-16, with every failure raised as a RuntimeError that names the file. It knows
// nothing of what the lines mean.
#pragma once

#include <QString>
#include <vector>

namespace quarv {

class LineFile {
  public:
    // A larger file is refused rather than read into memory.
    static constexpr qint64 MaxBytes = 64 * 1024 * 1024;

    // Deletes a regular file that is there; false where it is still there afterwards.
    static bool Delete(const QString& path);

    // Both raise PermissionDenied where the system refuses access, else PathFileAccess.
    static void Write(const QString& path, const QString& text);
    // The lines of a file, whichever of CR LF, CR and LF ends them; UTF-8 where no byte order mark
    // says UTF-16, and without that mark. Raises PathFileAccess also where the file is larger than
    // MaxBytes, where its bytes are neither, and where it holds a character of code 0, as a program
    // or UTF-16 without a mark does; Overflow where there are more lines than `mostLines`.
    static std::vector<QString> Read(const QString& path, int mostLines);
};

}  // namespace quarv
