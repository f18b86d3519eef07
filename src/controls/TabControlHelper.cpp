#include "controls/TabControlHelper.h"

#include <cmath>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "base/UTIL.h"
#include "platform/forms/Form.h"
#include "platform/forms/TabStrip.h"

namespace quarv {
namespace {

bool IsPageFrame(const forms::Control& control) {
    const QString type = control.TypeName();
    return (type == u"FramePlus" || type == u"Frame") && !control.Tag().isEmpty();
}

QObject& FrameAt(const RObjectList& frames, qint16 position) {
    return *static_cast<forms::Control&>(*frames.Items(position)).Widget();
}

}  // namespace

void TabControlHelper::Init(forms::Form& Frm) {
    FindControls(Frm);
    LayOutFrames();
    OnClick();
}

void TabControlHelper::FindControls(forms::Form& Frm) {
    for (forms::Control* control : Frm.Controls()) {
        if (control->TypeName() == u"TabStrip") {
            tabStrip_ = dynamic_cast<forms::TabStrip*>(control);
        } else if (IsPageFrame(*control)) {
            frames_.Add(Borrow(control));
            SetByName(control->Widget(), QStringLiteral("BorderStyle"), 0);
            SetByName(control->Widget(), QStringLiteral("Caption"), QString());
        }
    }
}

void TabControlHelper::LayOutFrames() {
    for (qint16 i = 1; i <= frames_.Count(); ++i) {
        const forms::TabStrip& strip = Strip();
        PlaceControl(FrameAt(frames_, i), std::nearbyint(strip.ClientLeft()),
                     std::nearbyint(strip.ClientTop()), std::nearbyint(strip.ClientWidth()),
                     std::nearbyint(strip.ClientHeight()));
    }
}

void TabControlHelper::OnClick() {
    const forms::Tab* selected = Strip().SelectedItem();
    if (selected == nullptr) throw RuntimeError(RuntimeError::ObjectNotSet);
    // The tag is compared letter for letter.
    for (qint16 i = 1; i <= frames_.Count(); ++i) {
        QObject& frame = FrameAt(frames_, i);
        const bool shown = GetByName(&frame, QStringLiteral("Tag")).Text() == selected->Caption();
        SetByName(&frame, QStringLiteral("Visible"), shown);
    }
}

forms::TabStrip& TabControlHelper::Strip() const {
    if (tabStrip_ == nullptr) throw RuntimeError(RuntimeError::ObjectNotSet);
    return *tabStrip_;
}

}  // namespace quarv
