// GalleryRows: what the gallery's grids show: rows that keep their values, and columns of every
// kind.
#pragma once

#include <vector>

#include "grid/KelEditGridColumnList.h"
#include "grid/KelEditGridRowList.h"

namespace quarv::gallery {

class GalleryRow : public KelEditGridRow {
  public:
    explicit GalleryRow(std::vector<Value> values = {}) : values_(std::move(values)) {}

    qint16 VisibleIndex() const override { return visibleIndex_; }
    void SetVisibleIndex(qint16 position) override { visibleIndex_ = position; }
    qint32 PersistStatus() const override { return status_; }
    void SetPersistStatus(qint32 status) override { status_ = status; }
    // Empty beyond what was written.
    Value ColumnValue(qint16 ColNum) const override;
    void SetColumnValue(qint16 ColNum, const Value& value) override;
    // No value has any text.
    bool IsEmpty() const override;

  private:
    std::vector<Value> values_;
    qint16 visibleIndex_ = 0;
    qint32 status_ = 0;
};

// Text, text with choices, numbered choices, check box, file and custom text.
ColumnListRef AllKinds();
// Eleven rows for AllKinds, two of them deleted.
RowListRef SomeRows();
// As many rows as a list holds, of three columns of text.
ColumnListRef LongColumns();
RowListRef LongRows();

// Of LongRows those whose words are no longer what they were, as text.
QString ChangedLongRows(const KelEditGridRowList& rows);

// The values of the rows that are not deleted as text: fields parted by tabs, a line a row.
QString TextOf(const KelEditGridRowList& rows, const KelEditGridColumnList& columns);

}  // namespace quarv::gallery
