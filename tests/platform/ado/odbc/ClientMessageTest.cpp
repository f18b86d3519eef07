#include "platform/ado/odbc/ClientMessage.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

// A batch "ab" in two packets behind headers of four bytes, then a call of "p", then an attention.
const QByteArray Sent = QByteArray::fromHex(
    "01 00 000f 0033 01 00 04000000 6100 62"
    "01 01 0009 0033 02 00 00"
    "03 01 0010 0033 01 00 04000000 0100 7000"
    "06 01 0008 0033 01 00");

QStringList Texts(ClientMessages& messages) {
    QStringList texts;
    while (const auto message = messages.Take())
        texts += QString::number(message->type) + u' ' + message->Text();
    return texts;
}

TEST(ClientMessages, AreJoinedHoweverTheBytesAreCut) {
    for (qsizetype cut = 0; cut <= Sent.size(); ++cut) {
        ClientMessages messages;
        messages.Append(Sent.first(cut));
        QStringList texts = Texts(messages);
        messages.Append(Sent.sliced(cut));
        texts += Texts(messages);
        EXPECT_EQ(texts, (QStringList{"1 ab", "3 p", "6 "})) << cut;
    }
}

TEST(ClientMessages, AMessageThatIsNotWholeIsWaitedFor) {
    ClientMessages messages;
    messages.Append(Sent.first(23));
    EXPECT_FALSE(messages.Take());
    messages.Append(Sent.sliced(23, 1));
    const auto message = messages.Take();
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->IsRequest());
    EXPECT_EQ(message->body.toHex(), "0400000061006200");
    EXPECT_FALSE(messages.Take());
}

}  // namespace
}  // namespace quarv::test
