// PlainText: what a clipboard or a drag holds for a box of plain text, and what such a box gives to
// one. Knows no widget.
#pragma once

#include <QString>
#include <memory>

class QMimeData;

namespace quarv::forms {

// Text or a page of text; a file is neither, though its name may come along as text.
bool HasPlainText(const QMimeData& data);

// The text; that of a page without its markup where no plainer one is there. Null where
// HasPlainText is false.
QString PlainTextOf(const QMimeData& data);

// `text` as plain text and nothing else.
std::unique_ptr<QMimeData> AsPlainText(const QString& text);

}  // namespace quarv::forms
