#include "platform/forms/Mnemonics.h"

#include <QSet>

#include "platform/forms/Captioned.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

namespace {

bool IsWordStart(const QString& text, int position) {
    return position == 0 || !text.at(position - 1).isLetterOrNumber();
}

int Choose(const QString& caption, QSet<QChar>& taken) {
    for (bool wordStartsOnly : {true, false}) {
        for (int i = 0; i < caption.size(); ++i) {
            const QChar letter = caption.at(i).toCaseFolded();
            if (!letter.isLetterOrNumber() || letter.isSurrogate() || taken.contains(letter))
                continue;
            if (wordStartsOnly && !IsWordStart(caption, i)) continue;
            taken.insert(letter);
            return i;
        }
    }
    return -1;
}

}  // namespace

QString WithMnemonic(const QString& caption, int position) {
    QString shown;
    shown.reserve(caption.size() + 1);
    for (int i = 0; i < caption.size(); ++i) {
        if (i == position) shown += u'&';
        shown += caption.at(i);
        if (caption.at(i) == u'&') shown += u'&';
    }
    return shown;
}

std::vector<int> ChooseMnemonics(const QStringList& captions) {
    QSet<QChar> taken;
    std::vector<int> positions;
    positions.reserve(static_cast<size_t>(captions.size()));
    for (const QString& caption : captions) positions.push_back(Choose(caption, taken));
    return positions;
}

void AssignMnemonics(const ControlList& controls) {
    std::vector<Captioned*> captioned;
    QStringList captions;
    for (Control* control : controls) {
        auto* one = dynamic_cast<Captioned*>(control);
        if (one == nullptr || !one->WantsMnemonic()) continue;
        captioned.push_back(one);
        captions.append(one->Caption());
    }
    const std::vector<int> positions = ChooseMnemonics(captions);
    for (size_t i = 0; i < captioned.size(); ++i) captioned[i]->ShowMnemonic(positions[i]);
}

}  // namespace quarv::forms
