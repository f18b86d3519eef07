// ControlHost: the container that a control belongs to by name: the Form, or the UserControl whose
// part it is. Controls nested in frames belong to the host around the frames.
#pragma once

#include "platform/forms/Container.h"

namespace quarv::forms {

class ControlHost : public Container {
  public:
    // All controls that belong here, nested ones included, in creation order.
    const ControlList& Controls() const { return *controls_; }

  protected:
    ControlHost() : controls_(std::make_shared<ControlList>()) {}

  private:
    friend class Control;
    // False where controls placed here belong to the host further out.
    virtual bool OwnsNames() const { return true; }

    SharedControlList controls_;
};

}  // namespace quarv::forms
