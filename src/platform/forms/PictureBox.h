// PictureBox: shows one picture, scaled to fit and never distorted. Controls may be placed on it.
#pragma once

#include <QIcon>
#include <QWidget>

#include "platform/forms/Bordered.h"
#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class PictureBox : public QWidget, public Control, public Bordered, public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    // Without a border at first; with one, a thin line is shown.
    PictureBox(QWidget* container, const QString& name);

    // A null icon shows nothing.
    const QIcon& Picture() const { return picture_; }
    void SetPicture(const QIcon& picture);

  protected:
    void BorderChanged() override { update(); }
    void paintEvent(QPaintEvent* event) override;

  private:
    QIcon picture_;
};

}  // namespace quarv::forms
