#pragma once

#include "Catalogue/Database.h"

#include "Support/FakePictureReader.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// A catalogue with shots whose files are there, and a reader that answers when told.
class UnreadShots : public ::testing::Test {
 protected:
  /// Each shot is newer than those before it. The file is no picture, which the reader is not asked to know.
  ShotID add(const std::string& name) { return insert(folder_.write("files/" + name, "a file"), name); }
  ShotID addMissing(const std::string& name) { return insert(pathOf(name), name); }

  [[nodiscard]] std::string pathOf(const std::string& name) const { return folder_.path("files/" + name); }
  [[nodiscard]] std::string cataloguePath() const { return folder_.path("catalogue/nimbrel.sqlite"); }

  /// Runs the event loop until so many requests have come in.
  [[nodiscard]] bool wasAsked(std::size_t times) {
    return waitUntil([&] { return reader_.requests.size() >= times; });
  }

  TemporaryFolder folder_;
  std::unique_ptr<Database> database_ = Database::open(cataloguePath()).value();
  FakePictureReader reader_;

 private:
  ShotID insert(const std::string& path, const std::string& name) {
    Shot shot;
    shot.path = path;
    shot.name = name;
    shot.date = timestamp(++moment_);
    return database_->insert(shot);
  }

  double moment_ = 0;
};

/// The same with the queue that is tested.
template <class Queue>
class QueueFixture : public UnreadShots {
 protected:
  /// Runs the event loop until the only batch of the test has ended.
  [[nodiscard]] bool hasEnded() {
    return waitUntil([&] { return !queue_.isRunning() && finished_.count() == 1; });
  }

  Queue queue_{*database_, reader_};
  QSignalSpy finished_{&queue_, &Queue::finished};
};

}  // namespace Nimbrel::Testing
