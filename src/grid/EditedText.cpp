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
    if (mark_.isEmpty() || !edited.endsWith(mark_)) return edited;
    return edited.chopped(mark_.size()) + rest_;
}

}  // namespace quarv
