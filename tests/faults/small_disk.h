// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FAULTS_SMALL_DISK_H
#define TESTS_FAULTS_SMALL_DISK_H

#include "support/files.h"

#include <QTemporaryDir>

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

/// Gives this process, and all that it starts, mounts of its own, which end with it. Call it before
/// there is a second thread. False when the machine does not allow it.
inline bool makeOwnMounts()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return false;
        writeFile("/proc/self/setgroups", "deny");
        writeFile("/proc/self/uid_map", "0 " + user + " 1");
        writeFile("/proc/self/gid_map", "0 " + group + " 1");
    }
    // In a chroot "/" is no mount point: others may then see a disk for as long as it lives.
    mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    return true;
}

/// A file system of 256 KiB, after `makeOwnMounts`.
class SmallDisk {
public:
    SmallDisk()
        : m_mounted(mount("none", mountPoint().constData(), "tmpfs", 0, "size=256k") == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_mounted)
            umount2(mountPoint().constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    QString path(const QString& name) const { return m_directory.filePath(name); }

    bool isMounted() const { return m_mounted; }
    /// Leaves so many bytes free, or no more than its blocks allow.
    bool fill(int left = 0) const
    {
        const int file = open(path("filling").toLocal8Bit().constData(), O_WRONLY | O_CREAT, 0600);
        const char block[4096] = {};
        while (write(file, block, sizeof block) > 0) { }
        const bool isFull
            = errno == ENOSPC && ftruncate(file, lseek(file, 0, SEEK_END) - left) == 0;
        close(file);
        return isFull;
    }

    bool makeReadOnly() const
    {
        return mount("none", mountPoint().constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr)
            == 0;
    }

private:
    QByteArray mountPoint() const { return m_directory.path().toLocal8Bit(); }

    QTemporaryDir m_directory;
    bool m_mounted;
};

#endif
