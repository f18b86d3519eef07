// ColumnHeader: one column of a ListView, which owns it: its title, width and alignment.
#pragma once

#include <QString>

namespace quarv::forms {

enum class ColumnAlignment : int { Left = 0, Right = 1, Centre = 2 };

struct ColumnHeader {
    QString key;  // may be empty
    QString text;
    double width = 1440;  // twips, as it was added; the user may have resized the column since
    ColumnAlignment alignment = ColumnAlignment::Left;
};

}  // namespace quarv::forms
