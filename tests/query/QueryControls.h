// QueryControls: a query window and its controls by their names.
#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include "controls/RButton.h"
#include "platform/forms/DataGrid.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/TextBox.h"
#include "query/QueryView.h"
#include "support/BoxWatcher.h"
#include "support/TextPrinter.h"

namespace quarv::test {

class QueryControls {
  public:
    explicit QueryControls(ado::ConnectionFactory factory) : window(std::move(factory)) {}

    template <class T>
    T& Child(const char* name) {
        return *window.findChild<T*>(QLatin1String(name));
    }
    forms::TextBox& Query() { return Child<forms::TextBox>("Query"); }
    forms::FramePlus& ResultsFrame() { return Child<forms::FramePlus>("ResultsFrame"); }
    forms::DataGrid& Results() { return Child<forms::DataGrid>("Results"); }
    RButton& Button(const char* name) { return Child<RButton>(name); }

    // The column names and then each row, joined by "|".
    QStringList Rows() {
        const QAbstractItemModel& model = *Results().model();
        QStringList lines;
        for (int row = -1; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells << (row < 0 ? model.headerData(column, Qt::Horizontal)
                                  : model.index(row, column).data())
                             .toString();
            lines << cells.join(u'|');
        }
        return lines;
    }

    QueryView window;
};

}  // namespace quarv::test
