// An empty home for one test: its own hive paths in a temporary folder, and helpers over them.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/registry/Hives.h"

namespace quarv::registry {

inline QByteArray FileBytes(const QByteArray& path) {
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline void PutFile(const QByteArray& path, const QByteArray& bytes) {
    QDir().mkpath(QFile::decodeName(path.first(path.lastIndexOf('/'))));
    QFile file(QFile::decodeName(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.constData();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

inline bool Exists(const QByteArray& path) {
    struct stat there {};
    return ::lstat(path.constData(), &there) == 0;
}

class RegistryHome : public testing::Test {
  protected:
    RegistryHome() {
        const QByteArray root = QFile::encodeName(folder_.path());
        ::chmod(root.constData(), 0755);
        paths_ = {.user = root + "/user/quarv/user.hive",
                  .machine = root + "/machine/quarv/machine.hive",
                  .overlay = root + "/user/quarv/machine-overlay.hive"};
    }

    // Another program's view: nothing shared but the files. What it reports goes to reports_.
    Hives NewHives() {
        return Hives(paths_, [this](const QString& line) { reports_.append(line); });
    }

    // Makes the path of the machine-wide hive one that nobody, root included, can write.
    void BlockMachineHive() { PutFile(QFile::encodeName(folder_.path()) + "/machine", "a file"); }

    static ResultCode Set(Hives& hives, HKey root, const char* path, const char* name,
                          const QByteArray& text) {
        HKey key = NoKey;
        ResultCode code =
            hives.RegCreateKeyEx(root, path, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, &key);
        if (code == ERROR_SUCCESS)
            code = hives.RegSetValueEx(key, name, REG_SZ, text.constData(),
                                       static_cast<quint32>(text.size()) + 1);
        hives.RegCloseKey(key);
        return code;
    }

    // The text without its terminator; "(code N)" where it cannot be read.
    static QByteArray Get(Hives& hives, HKey root, const char* path, const char* name) {
        HKey key = NoKey;
        ResultCode code = hives.RegOpenKeyEx(root, path, KEY_QUERY_VALUE, &key);
        quint32 size = 0;
        if (code == ERROR_SUCCESS) code = hives.RegQueryValueEx(key, name, nullptr, nullptr, &size);
        QByteArray data(size, '?');
        if (code == ERROR_SUCCESS)
            code = hives.RegQueryValueEx(key, name, nullptr, data.data(), &size);
        hives.RegCloseKey(key);
        if (code != ERROR_SUCCESS) return "(code " + QByteArray::number(code) + ")";
        return data.chopped(1);
    }

    static ResultCode Delete(Hives& hives, HKey root, const char* path, const char* name) {
        HKey key = NoKey;
        ResultCode code = hives.RegOpenKeyEx(root, path, KEY_SET_VALUE, &key);
        if (code == ERROR_SUCCESS) code = hives.RegDeleteValue(key, name);
        hives.RegCloseKey(key);
        return code;
    }

    QTemporaryDir folder_;
    HivePaths paths_;
    QStringList reports_;
};

}  // namespace quarv::registry
