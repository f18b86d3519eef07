#include "platform/ado/OleDbString.h"

#include "platform/ado/ConnectProblems.h"

namespace quarv::ado {

namespace {

[[noreturn]] void Refuse(const QString& reason) {
    throw MakeConnectError(ConnectProblem::MalformedString, {reason});
}

class Reader {
  public:
    explicit Reader(const QString& text) : text_(text) {}

    // Stands at the next keyword; false at the end.
    bool SkipToKeyword() {
        while (at_ < text_.size() && (text_[at_].isSpace() || text_[at_] == u';')) ++at_;
        return at_ < text_.size();
    }

    QString Keyword() {
        QString keyword;
        for (; at_ < text_.size() && text_[at_] != u';'; ++at_) {
            if (text_[at_] == u'=') {
                if (at_ + 1 == text_.size() || text_[at_ + 1] != u'=') break;
                ++at_;
            }
            keyword += text_[at_];
        }
        keyword = keyword.trimmed();
        // The text behind a missing "=" may hold a password, so it is not quoted here.
        if (at_ == text_.size() || text_[at_] == u';')
            Refuse(QStringLiteral("a keyword is not followed by \"=\"."));
        if (keyword.isEmpty()) Refuse(QStringLiteral("a \"=\" has no keyword before it."));
        ++at_;
        return keyword;
    }

    QString Value(const QString& keyword) {
        while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
        if (at_ == text_.size()) return {};
        const QChar first = text_[at_];
        if (first == u'"' || first == u'\'') return Quoted(keyword, first);
        QString value;
        if (first == u'{' && Braced(value)) return value;
        return Plain();
    }

  private:
    QString Plain() {
        qsizetype end = text_.indexOf(u';', at_);
        if (end < 0) end = text_.size();
        const QString value = text_.mid(at_, end - at_).trimmed();
        at_ = end;
        return value;
    }

    // From the character behind an opening mark to its closing one; false where it never closes.
    bool Enclosed(QChar close, QString& value, qsizetype& end) const {
        for (end = at_ + 1; end < text_.size(); ++end) {
            if (text_[end] == close) {
                if (end + 1 == text_.size() || text_[end + 1] != close) return true;
                ++end;
            }
            value += text_[end];
        }
        return false;
    }

    bool NothingButBlanksBeforeNextPair(qsizetype at) const {
        while (at < text_.size() && text_[at].isSpace()) ++at;
        return at == text_.size() || text_[at] == u';';
    }

    QString Quoted(const QString& keyword, QChar quote) {
        QString value;
        qsizetype end = 0;
        if (!Enclosed(quote, value, end))
            Refuse(QStringLiteral("the value of \"") + keyword +
                   QStringLiteral("\" opens with a quote that is never closed."));
        if (!NothingButBlanksBeforeNextPair(end + 1))
            Refuse(QStringLiteral("the value of \"") + keyword +
                   QStringLiteral("\" goes on behind its closing quote."));
        at_ = end + 1;
        return value;
    }

    bool Braced(QString& value) {
        qsizetype end = 0;
        if (!Enclosed(u'}', value, end) || !NothingButBlanksBeforeNextPair(end + 1)) return false;
        at_ = end + 1;
        return true;
    }

    const QString& text_;
    qsizetype at_ = 0;
};

}  // namespace

OleDbString::OleDbString(const QString& text) {
    Reader reader(text);
    while (reader.SkipToKeyword()) {
        const QString keyword = reader.Keyword();
        pairs_.push_back({keyword, reader.Value(keyword)});
    }
}

std::optional<QString> OleDbString::Find(std::initializer_list<const char*> keywords) const {
    for (auto pair = pairs_.rbegin(); pair != pairs_.rend(); ++pair)
        for (const char* keyword : keywords)
            if (pair->keyword.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0)
                return pair->value;
    return std::nullopt;
}

}  // namespace quarv::ado
