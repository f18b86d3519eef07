// OleDbString: the keywords and values of an OLE DB connection string, read by the rules of the OLE
// DB programmer's reference ("Connection String Syntax"). It judges no keyword.
#pragma once

#include <QString>
#include <initializer_list>
#include <optional>
#include <vector>

namespace quarv::ado {

class OleDbString {
  public:
    struct Pair {
        QString keyword;  // as written, without surrounding blanks; "==" stands for "="
        QString value;    // without its quotes
    };

    // A value is plain up to ";" (surrounding blanks do not count), or stands in single or double
    // quotes, a doubled quote standing for one, or in braces, "}}" standing for "}". Braces that
    // never close are plain text. Raises a DataError where a keyword has no "=", a quote never
    // closes, or something follows a closing quote.
    explicit OleDbString(const QString& text);

    const std::vector<Pair>& Pairs() const { return pairs_; }
    // The value of the last pair whose keyword is one of `keywords`, in any letter case.
    std::optional<QString> Find(std::initializer_list<const char*> keywords) const;

  private:
    std::vector<Pair> pairs_;
};

}  // namespace quarv::ado
