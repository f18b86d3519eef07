// TableScript: turns the rows of the columns query into what the columns pane lists and into the
// table's CREATE TABLE script, in one pass. The pane owns it. It knows no widget and no SQL.
#pragma once

#include <QString>

#include "platform/ado/Recordset.h"

namespace quarv {

// Where the columns go while they are read: a list of items with sub-items counted from 1.
class TableColumnSink {
  public:
    virtual ~TableColumnSink() = default;

    // A new item whose key and text are both `name`.
    virtual void AddItem(const QString& name) = 0;
    // A text of the item that was added last.
    virtual void SetSubItem(int index, const QString& text) = 0;
};

class TableScript {
  public:
    static constexpr int TypeSubItem = 1;
    static constexpr int NullableSubItem = 2;
    static constexpr int DefaultSubItem = 3;

    // Starts the script of `table` over; the name is written bare.
    void Begin(const QString& table);
    // Reads `rows` to their end. What a field read or the sink raises travels on; the sink then
    // holds what it was given so far, and the script ends with the last whole column.
    void ReadColumns(ado::Recordset& rows, TableColumnSink& sink);
    // Closes the script.
    void Finish();

    // The script as far as it is built; empty before the first Begin.
    const QString& Text() const { return text_; }

  private:
    void ReadColumn(ado::Recordset& rows, TableColumnSink& sink);

    QString text_;
};

}  // namespace quarv
