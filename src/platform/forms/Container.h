// Container: a widget on which controls are placed (Form, UserControl, Frame, FramePlus,
// PictureBox). It lists the controls placed directly on it; the widget tree owns them.
#pragma once

#include "platform/forms/ControlList.h"

namespace quarv::forms {

class Container {
  public:
    virtual ~Container() = default;

    // The controls placed directly on this one, in creation order.
    const ControlList& ContainedControls() const { return *contained_; }

  protected:
    Container() : contained_(std::make_shared<ControlList>()) {}
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

  private:
    friend class Control;
    SharedControlList contained_;
};

}  // namespace quarv::forms
