#include "platform/ado/odbc/InstanceBrowser.h"

#include <gtest/gtest.h>

namespace quarv::test {

using ado::odbc::PortInAnswer;

namespace {

QByteArray Answer(const QByteArray& text) {
    return QByteArray(1, 5) + static_cast<char>(text.size()) + '\0' + text;
}

}  // namespace

TEST(InstanceBrowser, FindsTheInstancesPort) {
    const QByteArray one =
        "ServerName;HOST;InstanceName;EXPRESS;IsClustered;No;Version;15.0.2000.5;tcp;49172;"
        "np;\\\\HOST\\pipe\\sql;;";
    EXPECT_EQ(PortInAnswer(Answer(one), "EXPRESS"), 49172);
    EXPECT_EQ(PortInAnswer(Answer(one), "express"), 49172);
    EXPECT_EQ(PortInAnswer(Answer(one), "OTHER"), std::nullopt);
}

TEST(InstanceBrowser, RefusesAnswersThatNameNoPort) {
    const QByteArray answers[] = {
        QByteArray(),
        QByteArray("\5"),
        QByteArray("\5\0\0", 3),
        Answer("ServerName;HOST;InstanceName;EXPRESS;Version;15;;"),
        Answer("ServerName;HOST;InstanceName;EXPRESS;tcp;0;;"),
        Answer("ServerName;HOST;InstanceName;EXPRESS;tcp;70000;;"),
        Answer("ServerName;HOST;InstanceName;EXPRESS;tcp;x;;"),
        Answer("ServerName;HOST;InstanceName;EXPRESS;tcp"),
        Answer("tcp;1433;InstanceName;EXPRESS;;"),
        QByteArray("\4\0\0InstanceName;EXPRESS;tcp;1433;;", 35),
    };
    for (const QByteArray& answer : answers)
        EXPECT_EQ(PortInAnswer(answer, "EXPRESS"), std::nullopt) << answer.toHex().constData();
}

}  // namespace quarv::test
