// LanguageUse: which of the language's constructs a text uses: statements and clauses by their
// words, functions and types by the tables of the engine. Made from tokens, so that strings,
// comments and quoted names do not count.
#pragma once

#include <QSet>
#include <QStringList>
#include <vector>

namespace quarv::localdb::engine {

enum class UseKind : uint8_t { Statement, Clause, Function, Aggregate, Window, Type };

// Everything of a kind that could be used, by its written name, in the order of a list to read.
QStringList KnownUses(UseKind kind);

struct LanguageUse {
    UseKind kind;
    QString name;  // one of KnownUses

    friend bool operator==(const LanguageUse&, const LanguageUse&) = default;
};

size_t qHash(const LanguageUse& use, size_t seed = 0);

// What the text uses. Of a text that cannot be cut into tokens, what stands before that place.
QSet<LanguageUse> FindUses(const QString& text);

}  // namespace quarv::localdb::engine
