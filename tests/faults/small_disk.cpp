#include "small_disk.h"

#include "support/files.h"

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

bool makeOwnMounts()
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

SmallDisk::SmallDisk()
    : m_mounted(mount("none", mountPoint().constData(), "tmpfs", 0, "size=256k") == 0)
{
}

SmallDisk::~SmallDisk()
{
    if (m_mounted)
        umount2(mountPoint().constData(), MNT_DETACH);
}

bool SmallDisk::fill(int left) const
{
    const int file = open(path("filling").toLocal8Bit().constData(), O_WRONLY | O_CREAT, 0600);
    const char block[4096] = {};
    while (write(file, block, sizeof block) > 0) { }
    const bool isFull = errno == ENOSPC && ftruncate(file, lseek(file, 0, SEEK_END) - left) == 0;
    close(file);
    return isFull;
}

bool SmallDisk::makeReadOnly() const
{
    return mount("none", mountPoint().constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}
