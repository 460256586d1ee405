#include "Screencapture/SoundSource.h"

#include "Screencapture/SoundClock.h"

#include <pulse/pulseaudio.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <utility>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

using Time = std::chrono::steady_clock::time_point;

constexpr pa_sample_spec format{PA_SAMPLE_S16NE, SoundSource::sampleRate, SoundSource::channels};
constexpr std::size_t bytesPerFrame = sizeof(std::int16_t) * SoundSource::channels;
constexpr auto blockLength = 20ms;
constexpr std::size_t mostSamplesWaiting = std::size_t{30} * SoundSource::sampleRate * SoundSource::channels;

template <auto unreference>
struct Unreference {
  template <class T>
  void operator()(T* thing) const {
    unreference(thing);
  }
};
using Loop = std::unique_ptr<pa_threaded_mainloop, Unreference<pa_threaded_mainloop_free>>;
using Context = std::unique_ptr<pa_context, Unreference<pa_context_unref>>;
using Stream = std::unique_ptr<pa_stream, Unreference<pa_stream_unref>>;

/// All of the library's objects belong to the thread of its loop, and to others while they hold its lock.
class LoopLock {
 public:
  explicit LoopLock(pa_threaded_mainloop* loop) : loop_(loop) { pa_threaded_mainloop_lock(loop_); }
  ~LoopLock() { pa_threaded_mainloop_unlock(loop_); }
  LoopLock(const LoopLock&) = delete;
  LoopLock& operator=(const LoopLock&) = delete;

 private:
  pa_threaded_mainloop* loop_;
};

class PulseSource final : public SoundSource {
 public:
  PulseSource() = default;
  ~PulseSource() override;

  /// Whether sound comes, which is known within the limit.
  [[nodiscard]] bool connect(std::chrono::milliseconds limit);
  [[nodiscard]] std::vector<SoundBlock> take() override;

 private:
  [[nodiscard]] bool startConnecting();
  void hearContext();
  void startStream();
  void hearStream();
  void readBlocks();
  void keep(const void* data, std::size_t bytes);
  [[nodiscard]] Time measuredStart(std::size_t bytes) const;
  void settle(bool isReady);

  Loop loop_;
  Context context_;
  Stream stream_;
  std::promise<bool> ready_;
  bool isSettled_ = false;
  SoundClock clock_{sampleRate};
  std::vector<SoundBlock> blocks_;
  std::size_t waiting_ = 0;  ///< samples in the blocks
};

PulseSource::~PulseSource() {
  if (!loop_) return;
  pa_threaded_mainloop_stop(loop_.get());
  if (stream_) {
    pa_stream_set_state_callback(stream_.get(), nullptr, nullptr);
    pa_stream_set_read_callback(stream_.get(), nullptr, nullptr);
    pa_stream_disconnect(stream_.get());
  }
  if (context_) {
    pa_context_set_state_callback(context_.get(), nullptr, nullptr);
    pa_context_disconnect(context_.get());
  }
}

bool PulseSource::connect(std::chrono::milliseconds limit) {
  auto ready = ready_.get_future();
  return startConnecting() && ready.wait_for(limit) == std::future_status::ready && ready.get();
}

bool PulseSource::startConnecting() {
  loop_.reset(pa_threaded_mainloop_new());
  if (!loop_) return false;
  context_.reset(pa_context_new(pa_threaded_mainloop_get_api(loop_.get()), "Nimbrel"));
  if (!context_) return false;
  const auto hear = [](pa_context*, void* self) { static_cast<PulseSource*>(self)->hearContext(); };
  pa_context_set_state_callback(context_.get(), hear, this);
  return pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) == 0 &&
         pa_threaded_mainloop_start(loop_.get()) == 0;
}

void PulseSource::hearContext() {
  const auto state = pa_context_get_state(context_.get());
  if (state == PA_CONTEXT_READY) startStream();
  if (!PA_CONTEXT_IS_GOOD(state)) settle(false);
}

void PulseSource::startStream() {
  stream_.reset(pa_stream_new(context_.get(), "Recording", &format, nullptr));
  if (!stream_) return settle(false);
  const auto hear = [](pa_stream*, void* self) { static_cast<PulseSource*>(self)->hearStream(); };
  const auto read = [](pa_stream*, std::size_t, void* self) { static_cast<PulseSource*>(self)->readBlocks(); };
  pa_stream_set_state_callback(stream_.get(), hear, this);
  pa_stream_set_read_callback(stream_.get(), read, this);
  constexpr auto any = static_cast<std::uint32_t>(-1);
  const auto fragment = pa_usec_to_bytes(std::chrono::microseconds(blockLength).count(), &format);
  const pa_buffer_attr buffer{any, any, any, any, static_cast<std::uint32_t>(fragment)};
  const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE |
                                                    PA_STREAM_INTERPOLATE_TIMING);
  if (pa_stream_connect_record(stream_.get(), nullptr, &buffer, flags) != 0) settle(false);
}

void PulseSource::hearStream() {
  const auto state = pa_stream_get_state(stream_.get());
  if (state == PA_STREAM_READY) settle(true);
  if (!PA_STREAM_IS_GOOD(state)) settle(false);
}

/// What is settled first counts: a source that goes away later falls silent.
void PulseSource::settle(bool isReady) {
  if (!std::exchange(isSettled_, true)) ready_.set_value(isReady);
}

void PulseSource::readBlocks() {
  const void* data = nullptr;
  std::size_t bytes = 0;
  while (pa_stream_readable_size(stream_.get()) > 0 && pa_stream_peek(stream_.get(), &data, &bytes) == 0 && bytes > 0) {
    keep(data, bytes);
    pa_stream_drop(stream_.get());
  }
}

/// Without data for samples that were lost, which take their time nevertheless.
void PulseSource::keep(const void* data, std::size_t bytes) {
  const auto place = clock_.place(measuredStart(bytes), bytes / bytesPerFrame);
  const auto* samples = static_cast<const std::int16_t*>(data);
  const auto count = bytes / sizeof(std::int16_t);
  const auto skipped = place.skip * channels;
  if (samples == nullptr || skipped >= count || waiting_ > mostSamplesWaiting) return;
  waiting_ += count - skipped;
  blocks_.push_back({place.start, {samples + skipped, samples + count}});
}

/// When the block that is read next began: so long ago as its sound took to come here.
Time PulseSource::measuredStart(std::size_t bytes) const {
  pa_usec_t latency = 0;
  int isNegative = 0;
  if (pa_stream_get_latency(stream_.get(), &latency, &isNegative) != 0) latency = pa_bytes_to_usec(bytes, &format);
  const std::chrono::microseconds age(isNegative != 0 ? -static_cast<std::int64_t>(latency)
                                                      : static_cast<std::int64_t>(latency));
  return std::chrono::steady_clock::now() - age;
}

std::vector<SoundBlock> PulseSource::take() {
  const LoopLock lock(loop_.get());
  waiting_ = 0;
  return std::exchange(blocks_, {});
}

}  // namespace

std::unique_ptr<SoundSource> SoundSource::open(std::chrono::milliseconds limit) {
  auto source = std::make_unique<PulseSource>();
  if (!source->connect(limit)) return nullptr;
  return source;
}

SoundBlock soundFrom(SoundBlock block, std::chrono::steady_clock::time_point start) {
  if (block.start >= start) return block;
  const std::chrono::duration<double> early = start - block.start;
  const auto frames = static_cast<std::size_t>(early.count() * SoundSource::sampleRate);
  const auto count = std::min(frames * SoundSource::channels, block.samples.size());
  block.samples.erase(block.samples.begin(), block.samples.begin() + static_cast<std::ptrdiff_t>(count));
  block.start = start;
  return block;
}

}  // namespace Nimbrel::Screencapture
