#include "platform/ado/ByteLog.h"

#include <gtest/gtest.h>

#include <QByteArray>

namespace quarv::test {

using ado::ByteLog;

namespace {

constexpr quint64 Piece = 65536;

QByteArray Read(const ByteLog& log, quint64 offset, quint64 count) {
    QByteArray bytes(static_cast<qsizetype>(count), '?');
    bytes.truncate(static_cast<qsizetype>(log.Read(offset, bytes.data(), count)));
    return bytes;
}

void Fill(ByteLog& log, quint64 size) {
    const QByteArray bytes(static_cast<qsizetype>(size - log.Size()), 'x');
    log.Append(bytes.constData(), static_cast<quint64>(bytes.size()));
}

}  // namespace

TEST(ByteLog, BytesLieAcrossTheEndOfAPiece) {
    ByteLog log;
    Fill(log, Piece - 3);
    log.Append("abcdef", 6);
    log.AppendByte('g');
    EXPECT_EQ(log.Size(), Piece + 4);
    EXPECT_EQ(log.Capacity(), 2 * Piece);
    EXPECT_EQ(Read(log, Piece - 4, 8), QByteArray("xabcdefg"));
    EXPECT_EQ(log.At(Piece - 1), 'c');
    EXPECT_EQ(log.At(Piece), 'd');
}

TEST(ByteLog, PieceThatIsJustFullTakesNoOther) {
    ByteLog log;
    Fill(log, Piece);
    EXPECT_EQ(log.Capacity(), Piece);
    log.Append(nullptr, 0);
    EXPECT_EQ(log.Capacity(), Piece);
    log.AppendByte('a');
    EXPECT_EQ(log.Capacity(), 2 * Piece);
    EXPECT_EQ(log.At(Piece), 'a');
}

TEST(ByteLog, ReadingEndsWithTheBytes) {
    ByteLog log;
    log.Append("abc", 3);
    EXPECT_EQ(Read(log, 1, 100), QByteArray("bc"));
    EXPECT_EQ(Read(log, 3, 100), QByteArray());
    EXPECT_EQ(Read(log, 100, 1), QByteArray());
}

TEST(ByteLog, CountsTakeAByteForSevenBits) {
    const std::pair<quint64, quint64> counts[] = {{0, 1},     {127, 1},   {128, 2},
                                                  {16383, 2}, {16384, 3}, {0xFFFFFFFFFFFFFFFF, 10}};
    for (const auto& [count, bytes] : counts) {
        ByteLog log;
        Fill(log, Piece - 1);
        log.AppendCount(count);
        log.Append("z", 1);
        quint64 again = 0;
        EXPECT_EQ(log.ReadCount(Piece - 1, again), bytes);
        EXPECT_EQ(again, count);
        EXPECT_EQ(log.Size(), Piece + bytes);
    }
}

TEST(ByteLog, TruncatingFreesPiecesAndWritingGoesOn) {
    ByteLog log;
    Fill(log, 3 * Piece + 5);
    log.Truncate(Piece + 1);
    EXPECT_EQ(log.Size(), Piece + 1);
    EXPECT_EQ(log.Capacity(), 2 * Piece);
    log.Append("ab", 2);
    EXPECT_EQ(Read(log, Piece, 10), QByteArray("xab"));
    log.Truncate(Piece);
    EXPECT_EQ(log.Capacity(), Piece);
    log.Append("cd", 2);
    EXPECT_EQ(Read(log, Piece - 1, 10), QByteArray("xcd"));
}

}  // namespace quarv::test
