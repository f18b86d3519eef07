#include "platform/ado/OleDbString.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

namespace {

struct Case {
    const char* text;
    const char* pairs;  // "keyword>value|" for each pair
};

const Case Readable[] = {
    {"", ""},
    {" ; ;", ""},
    {"a=b", "a>b|"},
    {"a=b;", "a>b|"},
    {"A Key = some value ; c=d", "A Key>some value|c>d|"},
    {"a=;b=c", "a>|b>c|"},
    {"a=", "a>|"},
    {"a= ", "a>|"},
    {"a=\"x;y\";b=c", "a>x;y|b>c|"},
    {"a='x;y';b=c", "a>x;y|b>c|"},
    {"a=\"say \"\"hi\"\"\"", "a>say \"hi\"|"},
    {"a='it''s'", "a>it's|"},
    {"a=\"it's\"", "a>it's|"},
    {"a=\" x \" ;b=c", "a> x |b>c|"},
    {"a=\"\";b=c", "a>|b>c|"},
    {"a={x;y};b=c", "a>x;y|b>c|"},
    {"a={x}}y};b=c", "a>x}y|b>c|"},
    {"a={x;b=c", "a>{x|b>c|"},
    {"a={x}y;b=c", "a>{x}y|b>c|"},
    {"a=x{y}z;b=c", "a>x{y}z|b>c|"},
    {"a=x\"y;b=c", "a>x\"y|b>c|"},
    {"a=x'y;b=c", "a>x'y|b>c|"},
    {"a==b=c", "a=b>c|"},
    {"a=b=c;d=e", "a>b=c|d>e|"},
    {"a=1;A=2", "a>1|A>2|"},
    {"Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;Integrated Security=SSPI;",
     "Provider>sqloledb|Data Source>localhost|Initial Catalog>mirel|Integrated Security>SSPI|"},
};

const char* const Malformed[] = {
    "a", "a;b=c", "=b", " =b", "a=\"x", "a='x", "a=\"x\"y;", "a='x'y", "a=\"x\"\"", "a=b;c",
};

QString Pairs(const QString& text) {
    QString pairs;
    const ado::OleDbString read(text);
    for (const auto& pair : read.Pairs()) pairs += pair.keyword + u'>' + pair.value + u'|';
    return pairs;
}

}  // namespace

TEST(OleDbString, ReadsQuotesAndBraces) {
    for (const Case& row : Readable) EXPECT_EQ(Pairs(row.text), QString(row.pairs)) << row.text;
}

TEST(OleDbString, RefusesWhatIsNotWellFormed) {
    for (const char* text : Malformed) {
        const DataError error = ErrorOf([text] { Pairs(text); });
        EXPECT_EQ(error.Number(), -2147467259) << text;
        EXPECT_TRUE(error.Description().startsWith("The connection string is not well formed:"))
            << text;
    }
}

TEST(OleDbString, RefusalNeverShowsValues) {
    const DataError error = ErrorOf([] { Pairs("Password=\"topsecret"); });
    EXPECT_FALSE(error.Description().contains("topsecret"));
    EXPECT_TRUE(error.Description().contains("\"Password\""));
    EXPECT_FALSE(ErrorOf([] { Pairs("Password='a'topsecret"); }).Description().contains("topsec"));
    EXPECT_FALSE(ErrorOf([] { Pairs("Password=a;topsecret"); }).Description().contains("topsec"));
}

TEST(OleDbString, LastOfEqualKeywordsCounts) {
    const ado::OleDbString pairs("User Id=a;UID=b;PWD=c;user id=d");
    EXPECT_EQ(pairs.Find({"User Id", "UID"}), QStringLiteral("d"));
    EXPECT_EQ(pairs.Find({"Password", "PWD"}), QStringLiteral("c"));
    EXPECT_EQ(pairs.Find({"Server"}), std::nullopt);
}

}  // namespace quarv::test
