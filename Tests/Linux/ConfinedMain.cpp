// The tests of this program run in namespaces of their own, where they may set limits, mount file systems and have an
// account that the system does not know, without the rest of the machine noticing.

#include "Support/TestEnvironment.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

#include <sched.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr const char* unknownAccount = "54321 ";

void write(const char* path, const std::string& content) { std::ofstream(path) << content << std::flush; }

void enterNamespaces() {
  const auto user = std::to_string(::getuid());
  const auto group = std::to_string(::getgid());
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
    std::perror("These tests need namespaces for users");
    std::exit(1);
  }
  write("/proc/self/uid_map", unknownAccount + user + " 1");
  write("/proc/self/setgroups", "deny");
  write("/proc/self/gid_map", unknownAccount + group + " 1");
}

}  // namespace

int main(int argc, char** argv) {
  // Before anything starts a thread, since the namespace of one cannot be changed.
  enterNamespaces();
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
