// TableScript: turns the rows of the columns query into what the columns pane lists and into the
// table's CREATE TABLE script, in one pass. The pane owns it. It knows no widget and no SQL.
#pragma once

#include <QString>

#include "inspect/TableColumnSink.h"
#include "platform/ado/Recordset.h"

namespace quarv {

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
