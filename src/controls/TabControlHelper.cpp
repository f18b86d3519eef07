#include "controls/TabControlHelper.h"

#include "base/LateBinding.h"
#include "base/UTIL.h"
#include "platform/forms/Form.h"

namespace quarv {
namespace {

bool IsPageFrame(const forms::Control& control) {
    const QString type = control.TypeName();
    return (type == u"FramePlus" || type == u"Frame") &&
           !GetByName(control.Widget(), QStringLiteral("Tag")).ToText().isEmpty();
}

QObject& FrameAt(const RObjectList& frames, qint16 position) {
    return dynamic_cast<QObject&>(*frames.Items(position));
}

// Rounded half to even.
double WholeByName(const QObject* object, const QString& name) {
    return static_cast<double>(GetByName(object, name).ToInteger());
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
            tabStrip_ = control->Widget();
        } else if (IsPageFrame(*control)) {
            frames_.Add(Borrow(control));
            SetByName(control->Widget(), QStringLiteral("BorderStyle"), 0);
            SetByName(control->Widget(), QStringLiteral("Caption"), QString());
        }
    }
}

void TabControlHelper::LayOutFrames() {
    for (qint16 i = 1; i <= frames_.Count(); ++i)
        PlaceControl(FrameAt(frames_, i), WholeByName(tabStrip_, QStringLiteral("ClientLeft")),
                     WholeByName(tabStrip_, QStringLiteral("ClientTop")),
                     WholeByName(tabStrip_, QStringLiteral("ClientWidth")),
                     WholeByName(tabStrip_, QStringLiteral("ClientHeight")));
}

void TabControlHelper::OnClick() {
    const ObjectRef selected = GetByName(tabStrip_, QStringLiteral("SelectedItem")).ToObject();
    const QString caption =
        GetByName(dynamic_cast<QObject*>(selected.get()), QStringLiteral("Caption")).ToText();
    // The tag is compared letter for letter.
    for (qint16 i = 1; i <= frames_.Count(); ++i) {
        QObject& frame = FrameAt(frames_, i);
        const bool shown = GetByName(&frame, QStringLiteral("Tag")).ToText() == caption;
        SetByName(&frame, QStringLiteral("Visible"), shown);
    }
}

}  // namespace quarv
