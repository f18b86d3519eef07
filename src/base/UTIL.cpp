#include "base/UTIL.h"

#include "base/Hooks.h"
#include "base/LateBinding.h"
#include "base/RUtils.h"

namespace quarv {

namespace {

// A control that is shrunk to this or less, in its container's units, keeps the size that it has.
constexpr double SmallestSize = 30;

// The first entry equal to the text; -1 where there is none.
qint64 FindEntry(QObject& control, const QString& text) {
    const qint64 count = GetByName(&control, QStringLiteral("ListCount")).ToInteger();
    for (qint64 i = 0; i < count; ++i) {
        if (SameText(CallByName(&control, QStringLiteral("List"), {i}).ToText(), text)) return i;
    }
    return -1;
}

}  // namespace

bool ListContains(QObject& control, const QString& text) {
    return FindEntry(control, text) >= 0;
}

void SelectListEntry(QObject& control, const QString& text) {
    SetByName(&control, QStringLiteral("ListIndex"), FindEntry(control, text));
}

void ShowNote(const QString& text, const QString& title) {
    if (const auto& show = ProgramHooks().showNote) show(BarsToLineBreaks(text), title);
}

bool AskYesNo(const QString& text, const QString& title) {
    const auto& ask = ProgramHooks().askYesNo;
    return ask && ask(BarsToLineBreaks(text), title);
}

void PlaceControl(QObject& control, double left, double top, double width, double height) {
    SetByName(&control, QStringLiteral("Left"), left);
    SetByName(&control, QStringLiteral("Top"), top);
    SizeControl(control, width, height);
}

void SizeControl(QObject& control, double width, double height) {
    if (width > SmallestSize) SetByName(&control, QStringLiteral("Width"), width);
    if (height > SmallestSize) SetByName(&control, QStringLiteral("Height"), height);
}

void CentreOnMainMonitor(QObject& form) {
    const Hooks& hooks = ProgramHooks();
    if (!hooks.centreForm) return;
    QObject* mainWindow = hooks.mainWindow ? hooks.mainWindow() : nullptr;
    hooks.centreForm(form, mainWindow);
    if (hooks.setMainWindow) hooks.setMainWindow(mainWindow);
}

}  // namespace quarv
