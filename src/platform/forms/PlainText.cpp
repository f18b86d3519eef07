#include "platform/forms/PlainText.h"

#include <QMimeData>
#include <QTextDocumentFragment>
#include <QUrl>
#include <algorithm>

namespace quarv::forms {

namespace {

// hasText() would say so of addresses, too.
bool HasTextItself(const QMimeData& data) {
    return data.hasFormat(QStringLiteral("text/plain"));
}

bool HoldsFiles(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

}  // namespace

bool HasPlainText(const QMimeData& data) {
    return (HasTextItself(data) || data.hasHtml()) && !HoldsFiles(data);
}

QString PlainTextOf(const QMimeData& data) {
    if (!HasPlainText(data)) return {};
    if (HasTextItself(data)) return data.text();
    return QTextDocumentFragment::fromHtml(data.html()).toPlainText();
}

std::unique_ptr<QMimeData> AsPlainText(const QString& text) {
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return data;
}

}  // namespace quarv::forms
