// UTIL: the module of helpers that deal with controls and windows. Controls are reached by the
// names of their members (LateBinding), boxes and monitors through the program's Hooks, so that no
// widget is known here. Plain texts, values and file names are in RUtils.
#pragma once

#include <QObject>
#include <QString>

namespace quarv {

// The entries 0 .. ListCount - 1 of any control with the properties ListCount and ListIndex and the
// method List(position), compared in any letter case.
bool ListContains(QObject& control, const QString& text);
// Sets ListIndex to the first equal entry, -1 where there is none.
void SelectListEntry(QObject& control, const QString& text);

// Every "|" of the text becomes a line break. A note with an OK button; nothing without a hook.
void ShowNote(const QString& text, const QString& title);
// True for Yes, false for No, for a closed box and without a hook.
bool AskYesNo(const QString& text, const QString& title);

// Set Left and Top always, Width and Height only where they are greater than 30; in the units of
// the control's container. Raise NoSuchMember where the control lacks one that is set.
void PlaceControl(QObject& control, double left, double top, double width, double height);
void SizeControl(QObject& control, double width, double height);

// Centres the form on the monitor that holds the main window; nothing where there are no monitors.
void CentreOnMainMonitor(QObject& form);

}  // namespace quarv
