#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <functional>
#include <optional>
#include <string>

namespace Nimbrel {

/// Fetches pictures of a recording in the background, one at a time, for somebody who moves through it: when a picture
/// has come and several others were asked for meanwhile, only the one asked for last is fetched. Main thread.
class FrameLoader final : public QObject {
  Q_OBJECT

 public:
  /// Gives the picture of a moment, in seconds, fitted into a size in pixels where it is larger; null when there is
  /// none. Called in another thread, one call at a time, the last of them perhaps after the loader is gone.
  using Grab = std::function<QImage(double seconds, QSize limit)>;

  /// The threads are borrowed, and outlive it.
  FrameLoader(Grab grab, QThreadPool& threads, QObject* parent = nullptr);

  void load(double seconds, QSize limit);

 Q_SIGNALS:
  /// The picture of the moment that was asked for. Null when it could not be had.
  void loaded(double seconds, const QImage& frame);

 private:
  struct Request {
    double seconds = 0;
    QSize limit;
  };

  void begin(const Request& request);

  Grab grab_;
  QThreadPool& threads_;
  bool isBusy_ = false;
  std::optional<Request> next_;
};

/// Takes the pictures from the recording at that path, which is opened with the first of them.
[[nodiscard]] FrameLoader::Grab grabFrom(const std::string& path);

}  // namespace Nimbrel
