#include "platform/registry/tool/ToolArguments.h"

#include "platform/registry/tool/ToolError.h"

namespace quarv::registry {

namespace {

using Command = ToolArguments::Command;

struct CommandRule {
    const char16_t* word;
    Command command;
    const char16_t* options;  // the letters that it takes
    qsizetype maxWords;       // besides itself: the key, then what may follow it
};

constexpr CommandRule Rules[] = {
    {u"query", Command::Query, u"vs", 2},
    {u"add", Command::Add, u"vtd", 3},
    {u"delete", Command::Delete, u"vf", 2},
};

constexpr struct {
    const char16_t* word;
    const char16_t* shortName;
    HKey root;
} Roots[] = {
    {u"HKLM", u"HKLM", HKEY_LOCAL_MACHINE},
    {u"HKEY_LOCAL_MACHINE", u"HKLM", HKEY_LOCAL_MACHINE},
    {u"HKCU", u"HKCU", HKEY_CURRENT_USER},
    {u"HKEY_CURRENT_USER", u"HKCU", HKEY_CURRENT_USER},
};

const CommandRule& RuleOf(const QString& word) {
    for (const CommandRule& rule : Rules)
        if (word == QString::fromUtf16(rule.word)) return rule;
    throw ToolError{QStringLiteral("\"%1\" is no command; see quarv-reg --help").arg(word)};
}

void SetKey(const QString& word, ToolArguments& arguments) {
    const qsizetype slash = word.indexOf(u'\\');
    const QString root = slash < 0 ? word : word.first(slash);
    for (const auto& entry : Roots) {
        if (root.compare(QString::fromUtf16(entry.word), Qt::CaseInsensitive) != 0) continue;
        arguments.root = entry.root;
        arguments.rootName = QString::fromUtf16(entry.shortName);
        arguments.path = slash < 0 ? QString() : word.sliced(slash + 1);
        while (arguments.path.endsWith(u'\\')) arguments.path.chop(1);
        return;
    }
    throw ToolError{QStringLiteral("\"%1\" does not begin with HKLM or HKCU").arg(word)};
}

void SetOnce(std::optional<QString>& target, const QString& what, const QString& word) {
    if (target) throw ToolError{QStringLiteral("the %1 is given twice").arg(what)};
    target = word;
}

// Takes the option at words[at] and leaves `at` on its last word.
void TakeOption(const QStringList& words, qsizetype& at, const CommandRule& rule,
                ToolArguments& arguments) {
    const QString& word = words[at];
    const bool known =
        word.size() == 2 && QString::fromUtf16(rule.options).contains(word[1].unicode());
    if (!known)
        throw ToolError{QStringLiteral("%1 takes no option \"%2\"; see quarv-reg --help")
                            .arg(QString::fromUtf16(rule.word), word)};
    const char16_t letter = word[1].unicode();
    if (letter == u's') arguments.recursive = true;
    if (letter == u'f') arguments.force = true;
    if (letter == u's' || letter == u'f') return;
    if (++at == words.size())
        throw ToolError{QStringLiteral("the option %1 needs a word behind it").arg(word)};
    if (letter == u'v') SetOnce(arguments.name, QStringLiteral("name"), words[at]);
    if (letter == u't') SetOnce(arguments.type, QStringLiteral("type"), words[at]);
    if (letter == u'd') SetOnce(arguments.data, QStringLiteral("data"), words[at]);
}

void TakeWords(const QStringList& plain, const CommandRule& rule, ToolArguments& arguments) {
    if (plain.isEmpty())
        throw ToolError{QStringLiteral("%1 needs a key").arg(QString::fromUtf16(rule.word))};
    if (plain.size() > rule.maxWords)
        throw ToolError{QStringLiteral("\"%1\" is one word too many").arg(plain[rule.maxWords])};
    SetKey(plain[0], arguments);
    if (plain.size() > 1) SetOnce(arguments.name, QStringLiteral("name"), plain[1]);
    if (plain.size() > 2) SetOnce(arguments.data, QStringLiteral("data"), plain[2]);
    arguments.bare = plain.size() > 1;
}

void CheckTogether(const ToolArguments& arguments) {
    if (arguments.command == Command::Add && !arguments.data && (arguments.name || arguments.type))
        throw ToolError{QStringLiteral("add needs the value's data (-d)")};
    if (arguments.recursive && arguments.name)
        throw ToolError{QStringLiteral("-s goes with a whole key, not with one value")};
}

}  // namespace

ToolArguments ToolArguments::Parse(const QStringList& words) {
    ToolArguments arguments;
    if (words.isEmpty()) throw ToolError{QStringLiteral("no command given; see quarv-reg --help")};
    if (words[0] == u"--help" || words[0] == u"-h") return arguments;
    if (words[0] == u"--version") {
        arguments.command = Command::Version;
        return arguments;
    }
    const CommandRule& rule = RuleOf(words[0]);
    arguments.command = rule.command;
    QStringList plain;
    bool optionsEnded = false;
    for (qsizetype at = 1; at < words.size(); ++at) {
        if (!optionsEnded && words[at] == u"--help") return {};
        if (!optionsEnded && words[at] == u"--")
            optionsEnded = true;
        else if (!optionsEnded && words[at].size() > 1 && words[at].startsWith(u'-'))
            TakeOption(words, at, rule, arguments);
        else
            plain.append(words[at]);
    }
    TakeWords(plain, rule, arguments);
    CheckTogether(arguments);
    return arguments;
}

}  // namespace quarv::registry
