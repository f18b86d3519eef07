// GalleryWindow: the window of the gallery. It owns its controls by the widget tree and answers the
// small grid as a host does: it gives new rows away, deletes rows and fills in notes.
#pragma once

#include "gallery/GalleryRows.h"
#include "platform/forms/Form.h"

namespace quarv {

class KelEditGrid;
class RButton;

namespace gallery {

class GalleryWindow : public forms::Form {
    Q_OBJECT

  public:
    // `withLongList` fills the lower grid with as many rows as a list holds.
    explicit GalleryWindow(bool withLongList);

    // The rows of the upper grid as text, then those of the lower one that were changed.
    QString Rows() const;

  private:
    void MakeLooks();
    void MakeButtons();
    void MakeSmallGrid();
    void MakeLongGrid(bool filled);
    void MakePanels();
    void DeleteCurrentRow();
    RButton* MakeButton(const QString& name, double left, double top);

    ColumnListRef columns_ = AllKinds();
    RowListRef rows_ = SomeRows();
    KelEditGrid* grid_ = nullptr;
    KelEditGrid* longGrid_ = nullptr;
};

}  // namespace gallery
}  // namespace quarv
