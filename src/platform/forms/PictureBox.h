// PictureBox: shows one picture, scaled to fit and never distorted. Controls may be placed on it.
#pragma once

#include <QIcon>
#include <QWidget>

#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class PictureBox : public QWidget, public Control, public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    PictureBox(QWidget* container, const QString& name);

    // A null icon shows nothing.
    const QIcon& Picture() const { return picture_; }
    void SetPicture(const QIcon& picture);

    // 0, the default, is no border; 1 a thin line. Any other value raises InvalidPropertyValue.
    int BorderStyle() const { return border_; }
    void SetBorderStyle(int border);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QIcon picture_;
    int border_ = 0;
};

}  // namespace quarv::forms
