#ifndef TESTS_FAULTS_SMALL_DISK_H
#define TESTS_FAULTS_SMALL_DISK_H

#include <QString>
#include <QTemporaryDir>

/// Gives this process, and all that it starts, mounts of its own, which end with it. Call it before
/// there is a second thread. False when the machine does not allow it.
bool makeOwnMounts();

/// A file system of 256 KiB, after `makeOwnMounts`.
class SmallDisk {
public:
    SmallDisk();
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    QString path(const QString& name) const { return m_directory.filePath(name); }

    bool isMounted() const { return m_mounted; }
    /// Leaves so many bytes free, or no more than its blocks allow.
    bool fill(int left = 0) const;
    bool makeReadOnly() const;

private:
    QByteArray mountPoint() const { return m_directory.path().toLocal8Bit(); }

    QTemporaryDir m_directory;
    bool m_mounted;
};

#endif
