// ImageList: numbered pictures for the nodes of trees and the like. A control without a look of its
// own; the form that it was made on owns it.
#pragma once

#include <QIcon>
#include <QWidget>
#include <vector>

#include "platform/forms/Control.h"

namespace quarv::forms {

class ImageList : public QWidget, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES

  public:
    ImageList(QWidget* container, const QString& name);

    // Appends a picture and gives its number, from 1. Vector pictures stay sharp at any scale.
    int Add(const QIcon& picture);
    // The same from a file or resource (":/icons/table.svg"). One that cannot be read raises
    // FileNotFound.
    int Add(const QString& path);
    int Count() const { return static_cast<int>(pictures_.size()); }
    // 1-based; raises SubscriptOutOfRange outside the list.
    const QIcon& Picture(int number) const;

  protected:
    void ApplyVisible(bool) override {}

  private:
    std::vector<QIcon> pictures_;
};

}  // namespace quarv::forms
