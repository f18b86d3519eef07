#include "grid/EditedText.h"

namespace quarv {

EditedText::EditedText(const QString& whole) : shown_(whole) {
    if (whole.size() <= MostShown) return;
    // A pair of surrogates is one character.
    const qsizetype cut = MostShown - (whole[MostShown].isLowSurrogate() ? 1 : 0);
    rest_ = whole.mid(cut);
    mark_ = QStringLiteral("\u2026 [%1 more]").arg(rest_.size());
    shown_ = whole.left(cut) + mark_;
}

QString EditedText::Whole(const QString& edited) const {
    const qsizetype mark = mark_.isEmpty() ? -1 : edited.lastIndexOf(mark_);
    if (mark < 0) return edited;
    QString whole;
    whole.reserve(edited.size() - mark_.size() + rest_.size());
    whole.append(QStringView(edited).first(mark)).append(rest_);
    return whole.append(QStringView(edited).sliced(mark + mark_.size()));
}

}  // namespace quarv
