#include "tagengine/VolumeId.h"

#include <array>

#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/vfs.h>

namespace {

/// FS_IOC_GETFSUUID, which the headers of older systems don't have.
struct Uuid {
    unsigned char length;
    std::array<unsigned char, 16> bytes;
};
constexpr unsigned long getUuid = _IOR(0x15, 0, Uuid);

constexpr long f2fsMagic = 0xF2F52010;

/// File systems whose number in `statfs` comes from their UUID.
bool isLasting(long type)
{
    return type == EXT4_SUPER_MAGIC || type == BTRFS_SUPER_MAGIC || type == f2fsMagic;
}

} // namespace

QByteArray VolumeId::of(int descriptor)
{
    Uuid uuid{};
    if (::ioctl(descriptor, getUuid, &uuid) == 0 && uuid.length > 0 && uuid.length <= uuid.bytes.size())
        return QByteArray(reinterpret_cast<const char*>(uuid.bytes.data()), uuid.length).toHex();
    struct statfs status {};
    if (::fstatfs(descriptor, &status) != 0 || !isLasting(static_cast<long>(status.f_type)))
        return {};
    return QByteArray(reinterpret_cast<const char*>(&status.f_fsid), sizeof status.f_fsid).toHex();
}
