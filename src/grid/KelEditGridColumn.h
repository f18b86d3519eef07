// KelEditGridColumn: the description of one column of the grid: name, width, and which editor its
// cells use. Host and grid share it; it knows no values.
#pragma once

#include <QString>

#include "base/StringList.h"

namespace quarv {

// The editor of a column's cells. There is no kind 2, and no other beside these five.
enum class CellKind : qint32 {
    Text = 0,    // a text box; where Choices holds an entry a list box that takes free text too
    List = 1,    // a list box; the cell holds the 1-based number of the entry, 0 for none
    Check = 3,   // a check box; the cell holds a boolean
    Browse = 4,  // a text box with a button that browses for a file
    Custom = 5,  // a text box with a button that the host answers
};

class KelEditGridColumn {
  public:
    QString Name;
    qint32 Width = 0;    // twips
    qint32 Left = 0;     // twips from the left of the first column; computed as it joins a list
    qint32 ColType = 0;  // a CellKind; other numbers have no editor
    std::shared_ptr<StringList> Choices;  // may be none
    qint32 MaxLength = 0;                 // UTF-16 units that may be typed; 0 means no limit
    QString BrowseText;                   // what the file dialog of a Browse column offers
    qint16 Index = 0;                     // 1-based position in the list it joined last
    bool FileNameOnly = false;  // of the path chosen in a Browse column only the name is stored

    // The other members keep what they have; FileNameOnly becomes true.
    void Init(const QString& AName, qint32 AWidth, qint32 AType);

    bool Is(CellKind kind) const { return ColType == static_cast<qint32>(kind); }
    // Choices holds an entry.
    bool HasChoices() const { return Choices && Choices->Count() > 0; }
};

using ColumnRef = std::shared_ptr<KelEditGridColumn>;

}  // namespace quarv
