// TabControlHelper: binds a form's tab strip to its page frames, so that tabs need no code a page.
// A page frame carries in its Tag the caption of its tab. The form owns the helper and all the
// controls; the helper sets their properties by name and knows no form in particular.
#pragma once

#include "base/RObjectList.h"

namespace quarv {

namespace forms {
class Form;
class TabStrip;
}  // namespace forms

class TabControlHelper {
  public:
    // Called once, from the form's load handler. Raises ObjectNotSet for page frames without a tab
    // strip, and where the strip has no selected tab.
    void Init(forms::Form& form);
    // Shows exactly the pages of the selected tab; for the tab strip's click handler. Raises
    // ObjectNotSet where there is no selected tab.
    void OnClick();

  private:
    void LayOutFrames();

    forms::TabStrip* tabStrip_ = nullptr;
    RObjectList frames_;
};

}  // namespace quarv
