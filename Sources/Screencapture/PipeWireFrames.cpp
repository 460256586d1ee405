#include "Screencapture/PipeWireFrames.h"

#include "Screencapture/PipeWirePicture.h"

#include <fcntl.h>
#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>
#include <spa/pod/builder.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <type_traits>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

constexpr long betweenLooksNanoseconds = 1'000'000'000 / 30;

/// Frees an object of the library with the function that it has for it.
template <auto release>
struct Release {
  template <class Object>
  void operator()(Object* object) const {
    release(object);
  }
};
template <class Object, auto release>
using Owned = std::unique_ptr<Object, Release<release>>;

/// The library, counted: it may be started and ended again.
struct Library {
  Library() { pw_init(nullptr, nullptr); }
  ~Library() { pw_deinit(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

bool holdsPicture(const pw_buffer& buffer) {
  return buffer.buffer->n_datas > 0 && buffer.buffer->datas[0].chunk->size > 0;
}

Error failure(const char* what) { return {std::string(what) + ": " + std::strerror(errno)}; }

class Frames final : public PipeWireFrames {
 public:
  explicit Frames(Events events) : events_(std::move(events)) {}
  ~Frames() override;

  [[nodiscard]] std::optional<Error> start(int remote, std::uint32_t node);

 private:
  [[nodiscard]] std::optional<Error> connect(int remote, std::uint32_t node);
  [[nodiscard]] std::optional<Error> makeStream(std::uint32_t node);
  void beginTicking();

  void changeState(pw_stream_state former, pw_stream_state state, const char* error);
  void takeFormat(const spa_pod* format);
  void keepLatest();
  void forget(const pw_buffer* buffer);
  void look();
  void end(const std::string& reason);

  static const pw_stream_events streamEvents;

  const Library library_;
  Events events_;
  Owned<pw_thread_loop, pw_thread_loop_destroy> loop_;
  Owned<pw_context, pw_context_destroy> context_;
  Owned<pw_core, pw_core_disconnect> core_;
  Owned<pw_stream, pw_stream_destroy> stream_;
  spa_hook hook_{};
  spa_video_info_raw format_{};
  pw_buffer* latest_ = nullptr;  ///< the last one that came, until it was looked at
};

/// What the library calls back, with the object as its data.
const pw_stream_events Frames::streamEvents = [] {
  pw_stream_events events{};
  events.version = PW_VERSION_STREAM_EVENTS;
  events.state_changed = [](void* data, pw_stream_state former, pw_stream_state state, const char* error) {
    static_cast<Frames*>(data)->changeState(former, state, error);
  };
  events.param_changed = [](void* data, std::uint32_t id, const spa_pod* parameter) {
    if (id == SPA_PARAM_Format && parameter != nullptr) static_cast<Frames*>(data)->takeFormat(parameter);
  };
  events.remove_buffer = [](void* data, pw_buffer* buffer) { static_cast<Frames*>(data)->forget(buffer); };
  events.process = [](void* data) { static_cast<Frames*>(data)->keepLatest(); };
  return events;
}();

Frames::~Frames() {
  if (loop_) pw_thread_loop_stop(loop_.get());
  // The stream says that it ends, too.
  events_ = {};
}

std::optional<Error> Frames::start(int remote, std::uint32_t node) {
  loop_.reset(pw_thread_loop_new("screen", nullptr));
  if (!loop_) return failure("PipeWire cannot be used");
  if (auto error = connect(remote, node)) return error;
  if (pw_thread_loop_start(loop_.get()) < 0) return failure("PipeWire cannot be used");
  return std::nullopt;
}

std::optional<Error> Frames::connect(int remote, std::uint32_t node) {
  context_.reset(pw_context_new(pw_thread_loop_get_loop(loop_.get()), nullptr, 0));
  if (!context_) return failure("PipeWire cannot be used");
  // Closed by the library, also when it fails.
  const int own = ::fcntl(remote, F_DUPFD_CLOEXEC, 0);
  if (own < 0) return failure("There is no connection to PipeWire");
  core_.reset(pw_context_connect_fd(context_.get(), own, nullptr, 0));
  if (!core_) return failure("There is no connection to PipeWire");
  if (auto error = makeStream(node)) return error;
  beginTicking();
  return std::nullopt;
}

std::optional<Error> Frames::makeStream(std::uint32_t node) {
  auto* properties = pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture", PW_KEY_MEDIA_ROLE,
                                       "Screen", nullptr);
  stream_.reset(pw_stream_new(core_.get(), "Screen recording", properties));
  if (!stream_) return failure("PipeWire offers no pictures");
  pw_stream_add_listener(stream_.get(), &hook_, &streamEvents, this);
  std::array<std::byte, 1024> memory{};
  spa_pod_builder builder{};
  spa_pod_builder_init(&builder, memory.data(), memory.size());
  const spa_pod* formats = wantedFormats(builder);
  // What is not ours any more must not be followed by whatever else there is to be seen.
  const auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS |
                                                  PW_STREAM_FLAG_DONT_RECONNECT);
  if (pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, node, flags, &formats, 1) >= 0) return std::nullopt;
  return failure("PipeWire offers no pictures");
}

void Frames::beginTicking() {
  auto* loop = pw_thread_loop_get_loop(loop_.get());
  auto* timer = pw_loop_add_timer(
      loop, [](void* data, std::uint64_t) { static_cast<Frames*>(data)->look(); }, this);
  timespec interval{0, betweenLooksNanoseconds};
  pw_loop_update_timer(loop, timer, &interval, &interval, false);
}

void Frames::changeState(pw_stream_state former, pw_stream_state state, const char* error) {
  if (state == PW_STREAM_STATE_ERROR) return end(std::string("PipeWire: ") + (error != nullptr ? error : "error"));
  if (state == PW_STREAM_STATE_UNCONNECTED && former != state) end("PipeWire has ended");
}

void Frames::takeFormat(const spa_pod* format) {
  format_ = agreedFormat(format);
  std::array<std::byte, 1024> memory{};
  spa_pod_builder builder{};
  spa_pod_builder_init(&builder, memory.data(), memory.size());
  std::array<const spa_pod*, 2> wanted{wantedBuffers(builder), wantedCrop(builder)};
  pw_stream_update_params(stream_.get(), wanted.data(), wanted.size());
}

void Frames::keepLatest() {
  while (auto* buffer = pw_stream_dequeue_buffer(stream_.get())) {
    // One without a picture tells of the pointer, which we do not ask for.
    auto* former = holdsPicture(*buffer) ? std::exchange(latest_, buffer) : buffer;
    if (former != nullptr) pw_stream_queue_buffer(stream_.get(), former);
  }
}

void Frames::forget(const pw_buffer* buffer) {
  if (latest_ == buffer) latest_ = nullptr;
}

void Frames::look() {
  if (!events_.look) return;
  QImage frame;
  if (latest_ != nullptr) {
    frame = pictureIn(*latest_->buffer, format_);
    pw_stream_queue_buffer(stream_.get(), std::exchange(latest_, nullptr));
  }
  events_.look(frame);
}

void Frames::end(const std::string& reason) {
  events_.look = nullptr;
  if (const auto ended = std::exchange(events_.ended, nullptr)) ended(reason);
}

}  // namespace

Result<std::unique_ptr<PipeWireFrames>> PipeWireFrames::open(int remote, std::uint32_t node, Events events) {
  auto frames = std::make_unique<Frames>(std::move(events));
  if (auto error = frames->start(remote, node)) return *error;
  return Result<std::unique_ptr<PipeWireFrames>>(std::move(frames));
}

}  // namespace Nimbrel::Screencapture
