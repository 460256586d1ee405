#pragma once

#include "Platform/PictureReader.h"

#include <QPointer>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace Nimbrel::Testing {

/// A reader that remembers what it was asked and answers when it is told to, or at once where it was told what a
/// picture holds.
class FakePictureReader final : public PictureReader {
 public:
  void read(QObject* context, const std::string& path, Wanted wanted, Then then) override;

  struct Request {
    std::string path;
    Wanted wanted;

    bool operator==(const Request&) const = default;
  };
  /// What was asked, in order.
  std::vector<Request> requests;
  /// The paths of these.
  [[nodiscard]] std::vector<std::string> paths() const;

  /// From now on every picture is answered by itself, with these contents, an empty reading, or nothing when
  /// `isMissing`.
  void answerByItself() { answersByItself_ = true; }
  std::unordered_map<std::string, PictureReading> contents;
  bool isMissing = false;

  /// How many requests wait for an answer.
  [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }
  /// Answers the request that waits longest; fails the test when none does.
  void answer(std::optional<PictureReading> reading);

 private:
  struct Waiting {
    QPointer<QObject> context;
    Then then;
  };
  std::deque<Waiting> waiting_;
  bool answersByItself_ = false;
};

/// A reading of text alone: one block a line, from the top down.
[[nodiscard]] PictureReading readingOf(const std::vector<std::string>& lines,
                                       const std::vector<std::string>& codes = {});

}  // namespace Nimbrel::Testing
