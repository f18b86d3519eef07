// Mnemonics: the underlined letters that reach captioned controls by Alt and a letter. A caption is
// literal text ("A&B" shows an ampersand); the underline is added for showing only and changes no
// word of it.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/forms/ControlList.h"

namespace quarv::forms {

// The caption as Qt's widgets want it: ampersands doubled, one before the letter at `position`
// (-1 for none).
QString WithMnemonic(const QString& caption, int position);

// For each caption the position of its letter, no letter twice: the first letters of words come
// first, then any letter or digit; -1 where none is left.
std::vector<int> ChooseMnemonics(const QStringList& captions);

// Chooses and shows the letters of all captioned controls of a form.
void AssignMnemonics(const ControlList& controls);

}  // namespace quarv::forms
