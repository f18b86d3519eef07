// TabControlHelper: binds a form's tab strip to its page frames, so that pages need no code of
// their own. A page frame carries in its Tag the caption of its tab. The form owns the helper and
// all controls; the helper reaches them by the names of their members and knows no form in
// particular.
#pragma once

#include "base/RObjectList.h"

namespace quarv {

namespace forms {
class Form;
class TabStrip;
}  // namespace forms

class TabControlHelper {
  public:
    // Called once, from the form's load handler. The form outlives the helper. Raises ObjectNotSet
    // where there is no tab strip, or one without a selected tab.
    void Init(forms::Form& Frm);
    // Shows exactly the pages of the selected tab; for the tab strip's click handler. Raises as
    // Init does.
    void OnClick();

  private:
    void FindControls(forms::Form& Frm);
    void LayOutFrames();
    forms::TabStrip& Strip() const;

    forms::TabStrip* tabStrip_ = nullptr;
    RObjectList frames_;
};

}  // namespace quarv
