// GridEditors: the controls that the grid lays over the cell being edited: Editor, Combo, Check and
// Elipsis. It shows, places and reads them and tells the grid which of the keys typed into them
// leave the cell. The grid owns it; the widget tree owns the controls.
#pragma once

#include <QObject>
#include <functional>

#include "grid/CellEditors.h"
#include "grid/EditedText.h"
#include "grid/GridKeys.h"

class QPainter;

namespace quarv {

class RButton;
class RCheckbox;

namespace forms {
class ComboBox;
class Control;
class TextBox;
}  // namespace forms

class GridEditors : public QObject, public CellEditors {
    Q_OBJECT

  public:
    explicit GridEditors(QWidget* grid);

    // The editors show in this part of the grid alone, in pixels.
    void SetVisiblePart(const QRect& pixels);
    // Twips.
    double EditorHeight() const;
    void MakeButtonSquare(double side);
    double CheckHeight() const;
    // Draws a check box as an open one looks, with its top left corner at a point in twips.
    void DrawCheck(QPainter& painter, bool checked, double left, double top) const;
    // The editor over the cell; null where none is shown.
    QWidget* Shown() const;

    void HideAll() override;
    void ShowText(const TextStart& start, const QRectF& place) override;
    void ShowList(const ListStart& start, const QRectF& place) override;
    void ShowCheck(bool checked, const QRectF& place) override;
    void MoveTo(const QRectF& place) override;
    QString Text() const override;
    void SetText(const QString& text) override;
    QString ListText() const override;
    int ListIndex() const override;
    bool Checked() const override;
    bool IsButtonShown() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    // A key that leaves the cell; the editor does not see it.
    void KeyTyped(GridKey key);
    void ButtonClicked();
    // The keyboard needs another place: its editor is about to be hidden.
    void FocusLeaving();

  private:
    void Show(forms::Control& editor, const QRectF& place);
    void Mask(QWidget& widget);
    void PlaceText(const QRectF& place, bool withButton);

    forms::TextBox* editor_;
    forms::ComboBox* combo_;
    RCheckbox* check_;
    RButton* button_;
    EditedText text_;        // what was put into the text box
    double buttonSide_ = 0;  // twips
    qint32 maxLength_ = 0;   // UTF-16 units that may be typed; 0 means no limit
    QRect visiblePart_;
};

}  // namespace quarv
