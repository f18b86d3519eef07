#include "LanguageDocument.h"

#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <algorithm>

#include "LanguageUse.h"

namespace quarv::localdb::engine {

namespace {

struct Count {
    int cases = 0;
    int failing = 0;  // of them, those in which an error is expected
};

struct Section {
    UseKind kind;
    const char* title;
};

constexpr Section Sections[] = {
    {UseKind::Statement, "Statements"},
    {UseKind::Clause, "Clauses and operators"},
    {UseKind::Type, "Types"},
    {UseKind::Aggregate, "Aggregates"},
    {UseKind::Window, "Window functions"},
    {UseKind::Function, "Functions"},
};

constexpr const char* Head =
    "# The local server's T-SQL\n\n"
    "Made from the cases in `tests/localdb/tsql/cases` by `scripts/tsql-doc`: how many cases use "
    "a\n"
    "construct, and in how many of them an error is expected. %1 cases in all, %2 of them with an\n"
    "error. System views and procedures are tested in `tests/localdb/catalog`.\n";

constexpr const char* RefusedHead =
    "\n## Refused by name\n\n"
    "Error 40517, \"Keyword or statement option '...' is not supported in this version of SQL\n"
    "Server.\", with the line of the construct. Nothing is passed over in silence.\n\n"
    "| Construct | Cases |\n|---|---:|\n";

bool ExpectsError(const Case& c) {
    return std::any_of(c.expected.begin(), c.expected.end(), [](const QString& line) {
        return line.startsWith(QStringLiteral("error "));
    });
}

class Counter {
  public:
    void Take(const Case& c) {
        const bool fails = ExpectsError(c);
        ++all_.cases;
        all_.failing += fails;
        QSet<LanguageUse> uses;
        for (const QString& batch : c.setup + c.batches) uses.unite(FindUses(batch));
        for (const LanguageUse& use : uses) {
            Count& count = counts_[use];
            ++count.cases;
            count.failing += fails;
        }
        TakeRefused(c);
    }

    QString Text() const {
        QString text = QString::fromLatin1(Head).arg(all_.cases).arg(all_.failing);
        for (const Section& section : Sections) AddSection(text, section);
        text += QLatin1String(RefusedHead);
        for (auto i = refused_.begin(); i != refused_.end(); ++i) {
            text += QStringLiteral("| %1 | %2 |\n").arg(i.key()).arg(i.value());
        }
        return text;
    }

  private:
    void TakeRefused(const Case& c) {
        static const QRegularExpression refusal(
            QStringLiteral("^error 40517 .*Keyword or statement option '(.*)' is not supported"));
        QSet<QString> names;
        for (const QString& line : c.expected) {
            const QRegularExpressionMatch match = refusal.match(line);
            if (match.hasMatch()) names.insert(match.captured(1));
        }
        for (const QString& name : names) ++refused_[name];
    }

    void AddSection(QString& text, const Section& section) const {
        text += QStringLiteral("\n## %1\n\n| Name | Cases | With an error |\n|---|---:|---:|\n")
                    .arg(QLatin1String(section.title));
        for (const QString& name : KnownUses(section.kind)) {
            const Count count = counts_.value({section.kind, name});
            QString shown = name;
            shown.replace(u'|', QStringLiteral(" / "));
            text +=
                QStringLiteral("| %1 | %2 | %3 |\n").arg(shown).arg(count.cases).arg(count.failing);
        }
    }

    Count all_;
    QHash<LanguageUse, Count> counts_;
    QMap<QString, int> refused_;
};

}  // namespace

QString LanguageDocument(const std::vector<Case>& cases) {
    Counter counter;
    for (const Case& c : cases) counter.Take(c);
    return counter.Text();
}

}  // namespace quarv::localdb::engine
