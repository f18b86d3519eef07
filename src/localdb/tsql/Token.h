// Token: one word, sign, name or literal of a batch, with its place. Made by Lexer; owns its text.
#pragma once

#include <QString>
#include <cstdint>

namespace quarv::localdb::tsql {

enum class TokenKind : uint8_t {
    End,
    Word,            // a bare identifier or a keyword
    QuotedName,      // [name] or "name", unescaped
    Variable,        // with its "@" or "@@"
    String,          // '...', unescaped
    NationalString,  // N'...', unescaped
    Integer,
    Decimal,  // with a point, without an exponent
    Float,    // with an exponent
    Money,    // without its currency sign
    Binary,   // the digits behind "0x"
    Sign,     // an operator or punctuation mark
};

struct Token {
    TokenKind kind = TokenKind::End;
    bool reserved = false;  // a Word that cannot name anything unless it is quoted
    qsizetype offset = 0;   // UTF-16 units into the batch
    qsizetype length = 0;   // of the token as written
    int line = 1;           // 1-based
    int column = 1;         // 1-based, UTF-16 units
    QString text;           // the name, the literal's value or the sign

    bool IsName() const {
        return kind == TokenKind::QuotedName || (kind == TokenKind::Word && !reserved);
    }
    // In any letter case; the language's own words have no other letters than ASCII's.
    bool IsWord(QStringView word) const {
        if (kind != TokenKind::Word || word.size() != text.size()) return false;
        for (qsizetype i = 0; i < word.size(); ++i) {
            if (Folded(word[i].unicode()) != Folded(text[i].unicode())) return false;
        }
        return true;
    }
    bool IsSign(QStringView sign) const { return kind == TokenKind::Sign && sign == text; }

    static constexpr char16_t Folded(char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    }
};

}  // namespace quarv::localdb::tsql
