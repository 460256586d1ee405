#include "Linux/Files/NetworkFileSystem.h"

#include <sys/vfs.h>

#include <algorithm>
#include <array>

namespace Nimbrel::NetworkFileSystem {

namespace {

// The numbers are those of the kernel; its headers have only some of them.
constexpr std::array<std::uint32_t, 19> types{
    0x00006969,  // NFS
    0x0000517B,  // SMB
    0xFF534D42,  // CIFS
    0xFE534D42,  // SMB 2 and later
    0x65735546,  // FUSE: SSH, clouds, virtiofs
    0x01021997,  // 9P
    0x5346414F,  // OpenAFS
    0x6B414653,  // AFS of the kernel
    0x73757245,  // Coda
    0x00C36400,  // Ceph
    0x0000564C,  // NCP
    0x7461636F,  // OCFS2
    0x01161970,  // GFS2
    0x0BD00BD0,  // Lustre
    0x47504653,  // GPFS
    0x19830326,  // BeeGFS
    0x786F4256,  // VirtualBox shared folders
    0xBACBACBC,  // VMware shared folders
    0x7C7C6673,  // Parallels shared folders
};

}  // namespace

bool isType(std::uint32_t type) { return std::find(types.begin(), types.end(), type) != types.end(); }

bool holds(const std::string& path) {
  struct statfs facts {};
  return ::statfs(path.c_str(), &facts) == 0 && isType(static_cast<std::uint32_t>(facts.f_type));
}

}  // namespace Nimbrel::NetworkFileSystem
