// TabControlHelper: binds a form's tab strip to its page frames, so that pages need no code of
// their own. A page frame carries in its Tag the caption of its tab. The form owns the helper and
// all controls: the frames outlive it, and a strip that went counts as none. The helper knows tab
// strip and frames by the names of their types and members alone.
#pragma once

#include <QPointer>

#include "base/RObjectList.h"

namespace quarv {

namespace forms {
class Form;
}  // namespace forms

class TabControlHelper {
  public:
    // Called once, from the form's load handler. Of several tab strips the last one counts. Raises
    // ObjectNotSet where there is no tab strip, or one without a selected tab.
    void Init(forms::Form& Frm);
    // Shows exactly the pages of the selected tab; for the tab strip's click handler. Raises as
    // Init does.
    void OnClick();

  private:
    void FindControls(forms::Form& Frm);
    void LayOutFrames();

    QPointer<QObject> tabStrip_;
    RObjectList frames_;
};

}  // namespace quarv
