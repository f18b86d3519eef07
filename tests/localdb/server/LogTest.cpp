#include "localdb/server/Log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

#include "Files.h"

namespace quarv::localdb::server {

TEST(LogTest, IsSetAsideWhenItIsFull) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("log"));
    Log log(path, 200);
    for (int i = 0; i < 10; ++i) log.Write(QString(50, QLatin1Char('a')));
    EXPECT_LE(Contents(path).size(), 200);
    EXPECT_LE(Contents(path + QStringLiteral(".old")).size(), 200);
    EXPECT_FALSE(Contents(path + QStringLiteral(".old")).isEmpty());
}

TEST(LogTest, WhatIsNoRegularFileStaysWhereItIs) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const UniqueFd reader(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    ASSERT_TRUE(reader);
    Log log(path, 10);
    for (int i = 0; i < 3; ++i) log.Write(QStringLiteral("a line longer than the limit"));
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".old")));
}

}  // namespace quarv::localdb::server
