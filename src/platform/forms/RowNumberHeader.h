// RowNumberHeader: the numbers of a DataGrid's rows, which owns it. All rows are equally high, and
// its width follows from the count of rows alone, so that a block of rows costs no walk over them.
#pragma once

#include <QHeaderView>

namespace quarv::forms {

class RowNumberHeader : public QHeaderView {
    Q_OBJECT

  public:
    explicit RowNumberHeader(QWidget* grid);

    // Pixels, for all rows.
    void SetRowHeight(int height);

    QSize sizeHint() const override;
};

}  // namespace quarv::forms
