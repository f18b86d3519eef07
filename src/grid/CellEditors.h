// CellEditors: what layout and editing of a grid ask of the controls that are laid over a cell: the
// text box, the list box, the check box, and the button beside the text box. The control implements
// it. Places are in twips from the control's top left corner.
#pragma once

#include <QRectF>
#include <QString>

#include "base/StringList.h"

namespace quarv {

class CellEditors {
  public:
    virtual ~CellEditors() = default;

    virtual void HideAll() = 0;

    // The text box with all of `text` selected. `maxLength` UTF-16 units may be typed, 0 means no
    // limit; a longer `text` stays whole. `withButton` gives the right end of the place to the
    // button.
    struct TextStart {
        QString text;
        qint32 maxLength = 0;
        bool withButton = false;
    };
    virtual void ShowText(const TextStart& start, const QRectF& place) = 0;

    // The list box with the entry at the 0-based `chosen`; where that is -1 with `text`. Raises
    // InvalidPropertyValue for a `chosen` that the list does not have. `takesFreeText` lets other
    // text than the entries be typed.
    struct ListStart {
        const StringList* choices = nullptr;  // none: an empty list
        int chosen = -1;
        QString text;
        bool takesFreeText = false;
    };
    virtual void ShowList(const ListStart& start, const QRectF& place) = 0;

    virtual void ShowCheck(bool checked, const QRectF& place) = 0;

    // The editor that is shown lies over that place now.
    virtual void MoveTo(const QRectF& place) = 0;

    virtual QString Text() const = 0;
    virtual void SetText(const QString& text) = 0;
    virtual QString ListText() const = 0;
    // 0-based; -1 where no entry is chosen.
    virtual int ListIndex() const = 0;
    virtual bool Checked() const = 0;
    virtual bool IsButtonShown() const = 0;

  protected:
    CellEditors() = default;
    CellEditors(const CellEditors&) = default;
    CellEditors& operator=(const CellEditors&) = default;
};

}  // namespace quarv
