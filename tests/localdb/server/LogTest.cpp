#include "localdb/server/Log.h"

#include <gtest/gtest.h>

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

}  // namespace quarv::localdb::server
