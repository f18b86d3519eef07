// Instance: one named server of one user: its directory under the user's data directory, its lock,
// its state file, its log. Starts and stops nothing itself.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "localdb/server/FileLock.h"
#include "localdb/server/InstanceState.h"

namespace quarv::localdb::server {

class Instance {
  public:
    // Any letter case; raises ServerError InstanceName.
    static Instance Named(const QString& name);
    // Names of the instances that have a directory, sorted.
    static QStringList All();

    const QString& Name() const { return name_; }
    QString Directory() const { return directory_; }
    QString DataDirectory() const { return directory_ + QStringLiteral("/data"); }
    QString LogFile() const { return directory_ + QStringLiteral("/log"); }
    FileLock Lock() const { return FileLock(directory_ + QStringLiteral("/lock")); }

    bool Exists() const;
    // The directory, for the user alone. Raises ServerError InstanceFiles.
    void MakeDirectory() const;

    // Nothing where the file is missing or damaged.
    std::optional<InstanceState> ReadState() const;
    // Replaces the file in one step, mode 0600. Raises ServerError InstanceFiles.
    void WriteState(const InstanceState& state) const;
    void RemoveState() const;
    // The state of a server that is serving; nothing while none is, or while it is starting.
    std::optional<InstanceState> RunningState() const;

  private:
    Instance(QString name, QString directory);

    QString StateFile() const { return directory_ + QStringLiteral("/state"); }

    QString name_;
    QString directory_;
};

}  // namespace quarv::localdb::server
