#include "Support/StoreHome.h"

#include "Model/AppIdentity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Nimbrel::Testing {

namespace {

constexpr double someMomentIn2026 = 1'773'000'000;

}  // namespace

void FakeFileEvents::watch(std::vector<WatchedFolder> folders, Seconds wantedLatency, Callback onChange) {
  watched.push_back(std::move(folders));
  latency = wantedLatency;
  onChange_ = std::move(onChange);
}

void FakeFileEvents::change() const {
  ASSERT_TRUE(onChange_) << "nothing is watched";
  onChange_();
}

StoreHome::StoreHome() : now(timestamp(someMomentIn2026)) {
  folders_ = {.home = folder_.path(),
              .applicationSupport = folder_.path(".local/share/Nimbrel"),
              .preferences = folder_.path(".config/Nimbrel"),
              .caches = folder_.path(".cache/Nimbrel")};
  folder_.makeFolder("Desktop");
  folder_.makeFolder(".config/Nimbrel");
}

std::string StoreHome::desktop(std::string_view name) const { return folder_.path("Desktop/" + std::string(name)); }

std::string StoreHome::inLibrary(std::string_view name) const {
  return folder_.path("Pictures/Nimbrel/" + std::string(name));
}

std::string StoreHome::addFile(const std::string& path) const {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << "no picture";
  return path;
}

std::unique_ptr<Store> StoreHome::open(ProcessRole role, FakeFileEvents** events) {
  auto fake = std::make_unique<FakeFileEvents>();
  if (events != nullptr) *events = fake.get();
  Services services;
  services.fileEvents = std::move(fake);
  return open(role, std::move(services));
}

std::unique_ptr<Store> StoreHome::open(ProcessRole role, Services services) {
  auto opened = Store::open({.role = role,
                             .folders = folders_,
                             .clock = [this] { return now; },
                             .services = std::move(services),
                             .defaults = AppIdentity::openDefaults(folders_.preferences)});
  EXPECT_TRUE(opened) << opened.error().message;
  return std::move(opened).value();
}

std::unique_ptr<Defaults> StoreHome::suiteOfOtherProcess() const {
  // One file under two names is what two processes have: the library keeps one state for each name within a process.
  const auto other = folder_.path("suite of another process");
  if (!std::filesystem::exists(other)) std::filesystem::create_directory_symlink(folders_.preferences, other);
  return std::make_unique<Defaults>(other, AppIdentity::bundleIdentifier());
}

std::vector<std::string> namesOf(const ShotList& shots) {
  std::vector<std::string> names;
  for (const auto& shot : shots) names.push_back(shot->name);
  return names;
}

ShotPtr shotNamed(const Store& store, std::string_view name) {
  const auto found = std::ranges::find(store.shots(), name, [](const ShotPtr& shot) { return shot->name; });
  if (found != store.shots().end()) return *found;
  ADD_FAILURE() << "no shot named " << name;
  return std::make_shared<const Shot>();
}

}  // namespace Nimbrel::Testing
