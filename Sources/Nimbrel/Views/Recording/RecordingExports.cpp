#include "Views/Recording/RecordingExports.h"

#include "Foundation/Background.h"
#include "Foundation/FilePath.h"
#include "Recording/RecordingProcessor.h"
#include "Store/Store.h"

#include <utility>

namespace Nimbrel {

namespace {

/// For the length, the sound and the picture.
constexpr int readerCount = 3;

Result<std::string> perform(const ExportRequest& request, const RecordingProcessor::Supervision& supervision) {
  const auto& [url, start, end, removeSilence, fps] = request;
  if (fps) return RecordingProcessor::gif(url, start, end, *fps, removeSilence, supervision);
  return RecordingProcessor::trimmedCopy(url, start, end, removeSilence, supervision);
}

}  // namespace

RecordingExports::RecordingExports(Store& store, Workspace& workspace) : store_(store), workspace_(workspace) {
  readers_.setMaxThreadCount(readerCount);
}

RecordingExports::~RecordingExports() {
  stop_.request_stop();
  pool_.waitForDone();
}

RecordingExport* RecordingExports::begin(const ExportRequest& request) {
  ++running_;
  auto* run = new RecordingExport(this);
  inBackground(
      run, pool_,
      [request, stop = stop_.get_token(), share = run->share_] {
        return perform(request, {.stop = stop, .progress = [&share](double done) { share->store(done); }});
      },
      [this, run, request](const Result<std::string>& outcome) { end(*run, request, outcome); });
  return run;
}

void RecordingExports::whenDone(std::function<void()> then) {
  if (running_ == 0) return then();
  then_ = std::move(then);
}

void RecordingExports::end(RecordingExport& run, const ExportRequest& request, const Result<std::string>& outcome) {
  run.deleteLater();
  --running_;
  if (outcome) {
    publish(outcome.value(), request);
    Q_EMIT run.succeeded();
  } else {
    Q_EMIT run.failed(outcome.error().message);
  }
  if (running_ > 0 || !then_) return;
  std::exchange(then_, nullptr)();
}

void RecordingExports::publish(const std::string& path, const ExportRequest& request) {
  // After a GIF what is stored is written all the same, for other processes to see.
  store_.setLastRecordingURL(request.fps ? store_.lastRecordingURL() : std::optional(path));
  store_.setStatus("Saved " + std::string(FilePath::lastComponent(path)));
  workspace_.reveal(path);
}

}  // namespace Nimbrel
