#include "Screencapture/ScreenDouble.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>
#include <pipewire/pipewire.h>
#include <spa/buffer/meta.h>
#include <spa/param/video/format-utils.h>
#include <spa/pod/builder.h>

#include <array>
#include <atomic>
#include <cstring>
#include <ctime>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Testing {

namespace {

constexpr long betweenPicturesNanoseconds = 10'000'000;

/// The bytes of the picture in the order of the format.
QImage inFormat(const QImage& picture, spa_video_format format) {
  switch (format) {
    case SPA_VIDEO_FORMAT_BGRx:
      return picture.convertToFormat(QImage::Format_RGB32);
    case SPA_VIDEO_FORMAT_BGRA:
      return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    case SPA_VIDEO_FORMAT_RGBx:
      return picture.convertToFormat(QImage::Format_RGBX8888);
    default:
      return picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  }
}

std::string valueOf(const spa_dict* properties, const char* key) {
  const char* value = properties == nullptr ? nullptr : spa_dict_lookup(properties, key);
  return value == nullptr ? "" : value;
}

/// Keeps the thread out as long as it lives.
class Locked {
 public:
  explicit Locked(pw_thread_loop* loop) : loop_(loop) { pw_thread_loop_lock(loop_); }
  ~Locked() { pw_thread_loop_unlock(loop_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  pw_thread_loop* loop_;
};

class Screen final : public ScreenDouble {
 public:
  Screen(int remote, const QImage& picture, spa_video_format format);
  ~Screen() override;

  [[nodiscard]] std::uint32_t node() const override { return node_; }
  void show(const QImage& picture) override;
  void crop(const QRect& part) override;
  [[nodiscard]] int shown() const override { return shown_; }

 private:
  void listen();
  void offer();
  const spa_pod* offeredFormat(spa_pod_builder& builder) const;
  void tick();
  void draw();
  void drawInto(const spa_buffer& buffer);
  void askForCrop();
  void hearOfObject(std::uint32_t id, std::string_view type, const spa_dict* properties);
  void link();

  spa_video_format format_;
  QImage picture_;
  std::optional<QRect> crop_;
  pw_thread_loop* loop_ = nullptr;
  pw_context* context_ = nullptr;
  pw_core* core_ = nullptr;
  pw_registry* registry_ = nullptr;
  pw_stream* stream_ = nullptr;
  spa_hook registryHook_{};
  spa_hook streamHook_{};
  pw_registry_events registryEvents_{};
  pw_stream_events streamEvents_{};
  QSize agreed_;
  std::atomic<std::uint32_t> node_ = SPA_ID_INVALID;
  std::atomic<int> shown_ = 0;
  std::map<std::string, std::string> ports_;  ///< of each node
  std::set<std::string> unlinked_;            ///< nodes that ask for pictures
  std::vector<pw_proxy*> links_;
};

Screen::Screen(int remote, const QImage& picture, spa_video_format format)
    : format_(format), picture_(inFormat(picture, format)) {
  pw_init(nullptr, nullptr);
  loop_ = pw_thread_loop_new("screen of the test", nullptr);
  context_ = pw_context_new(pw_thread_loop_get_loop(loop_), nullptr, 0);
  core_ = pw_context_connect_fd(context_, remote, nullptr, 0);
  registry_ = pw_core_get_registry(core_, PW_VERSION_REGISTRY, 0);
  stream_ = pw_stream_new(core_, "screen", pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", nullptr));
  listen();
  offer();
  auto* loop = pw_thread_loop_get_loop(loop_);
  auto* timer = pw_loop_add_timer(
      loop, [](void* data, std::uint64_t) { static_cast<Screen*>(data)->tick(); }, this);
  timespec interval{0, betweenPicturesNanoseconds};
  pw_loop_update_timer(loop, timer, &interval, &interval, false);
  pw_thread_loop_start(loop_);
}

Screen::~Screen() {
  pw_thread_loop_stop(loop_);
  pw_stream_destroy(stream_);
  for (auto* link : links_) {
    if (link) pw_proxy_destroy(link);
  }
  pw_proxy_destroy(reinterpret_cast<pw_proxy*>(registry_));
  pw_core_disconnect(core_);
  pw_context_destroy(context_);
  pw_thread_loop_destroy(loop_);
  pw_deinit();
}

void Screen::listen() {
  registryEvents_.version = PW_VERSION_REGISTRY_EVENTS;
  registryEvents_.global = [](void* data, std::uint32_t id, std::uint32_t, const char* type, std::uint32_t,
                              const spa_dict* properties) {
    static_cast<Screen*>(data)->hearOfObject(id, type, properties);
  };
  pw_registry_add_listener(registry_, &registryHook_, &registryEvents_, this);
  streamEvents_.version = PW_VERSION_STREAM_EVENTS;
  streamEvents_.param_changed = [](void* data, std::uint32_t id, const spa_pod* parameter) {
    auto* screen = static_cast<Screen*>(data);
    spa_video_info_raw agreed{};
    if (id != SPA_PARAM_Format || parameter == nullptr || spa_format_video_raw_parse(parameter, &agreed) < 0) return;
    screen->agreed_ = QSize(static_cast<int>(agreed.size.width), static_cast<int>(agreed.size.height));
    screen->askForCrop();
  };
  streamEvents_.process = [](void* data) { static_cast<Screen*>(data)->draw(); };
  pw_stream_add_listener(stream_, &streamHook_, &streamEvents_, this);
}

const spa_pod* Screen::offeredFormat(spa_pod_builder& builder) const {
  const spa_rectangle size{static_cast<std::uint32_t>(picture_.width()), static_cast<std::uint32_t>(picture_.height())};
  const spa_fraction variable{0, 1};
  return static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
      SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format, SPA_POD_Id(format_),
      SPA_FORMAT_VIDEO_size, SPA_POD_Rectangle(&size), SPA_FORMAT_VIDEO_framerate, SPA_POD_Fraction(&variable)));
}

void Screen::offer() {
  std::array<std::byte, 1024> memory{};
  spa_pod_builder builder{};
  spa_pod_builder_init(&builder, memory.data(), memory.size());
  const spa_pod* format = offeredFormat(builder);
  const auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS);
  EXPECT_GE(pw_stream_connect(stream_, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &format, 1), 0);
}

void Screen::askForCrop() {
  std::array<std::byte, 1024> memory{};
  spa_pod_builder builder{};
  spa_pod_builder_init(&builder, memory.data(), memory.size());
  const int stride = agreed_.width() * 4;
  std::array<const spa_pod*, 2> wanted{
      static_cast<const spa_pod*>(spa_pod_builder_add_object(
          &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
          SPA_POD_CHOICE_RANGE_Int(4, 2, 8), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1), SPA_PARAM_BUFFERS_size,
          SPA_POD_Int(stride * agreed_.height()), SPA_PARAM_BUFFERS_stride, SPA_POD_Int(stride))),
      static_cast<const spa_pod*>(spa_pod_builder_add_object(
          &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(SPA_META_VideoCrop),
          SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_region))))};
  pw_stream_update_params(stream_, wanted.data(), wanted.size());
}

void Screen::tick() {
  node_ = pw_stream_get_node_id(stream_);
  link();
  if (pw_stream_get_state(stream_, nullptr) == PW_STREAM_STATE_STREAMING) pw_stream_trigger_process(stream_);
}

void Screen::draw() {
  auto* buffer = pw_stream_dequeue_buffer(stream_);
  if (buffer == nullptr) return;
  drawInto(*buffer->buffer);
  pw_stream_queue_buffer(stream_, buffer);
  ++shown_;
}

void Screen::drawInto(const spa_buffer& buffer) {
  auto& data = buffer.datas[0];
  const auto size = static_cast<std::uint32_t>(picture_.sizeInBytes());
  const bool fits = picture_.size() == agreed_ && data.data != nullptr && size <= data.maxsize;
  *data.chunk = {.offset = 0, .size = fits ? size : 0, .stride = static_cast<int>(picture_.bytesPerLine()), .flags = 0};
  if (fits) std::memcpy(data.data, picture_.constBits(), size);
  auto* meta =
      static_cast<spa_meta_region*>(spa_buffer_find_meta_data(&buffer, SPA_META_VideoCrop, sizeof(spa_meta_region)));
  if (meta == nullptr) return;
  const QRect part = crop_.value_or(QRect());
  meta->region = {{part.x(), part.y()},
                  {static_cast<std::uint32_t>(part.width()), static_cast<std::uint32_t>(part.height())}};
}

void Screen::show(const QImage& picture) {
  const Locked locked(loop_);
  picture_ = inFormat(picture, format_);
  if (picture_.size() == agreed_) return;
  std::array<std::byte, 1024> memory{};
  spa_pod_builder builder{};
  spa_pod_builder_init(&builder, memory.data(), memory.size());
  const spa_pod* format = offeredFormat(builder);
  pw_stream_update_params(stream_, &format, 1);
}

void Screen::crop(const QRect& part) {
  const Locked locked(loop_);
  crop_ = part;
}

void Screen::hearOfObject(std::uint32_t id, std::string_view type, const spa_dict* properties) {
  const auto name = std::to_string(id);
  if (type == PW_TYPE_INTERFACE_Node && valueOf(properties, PW_KEY_MEDIA_CLASS) == "Stream/Input/Video") {
    unlinked_.insert(name);
  } else if (type == PW_TYPE_INTERFACE_Port) {
    ports_[valueOf(properties, PW_KEY_NODE_ID)] = name;
  }
}

void Screen::link() {
  const auto own = ports_.find(std::to_string(node_));
  if (own == ports_.end()) return;
  std::erase_if(unlinked_, [&](const std::string& node) {
    const auto input = ports_.find(node);
    if (input == ports_.end()) return false;
    auto* properties = pw_properties_new(PW_KEY_LINK_OUTPUT_PORT, own->second.c_str(), PW_KEY_LINK_INPUT_PORT,
                                         input->second.c_str(), nullptr);
    links_.push_back(static_cast<pw_proxy*>(
        pw_core_create_object(core_, "link-factory", PW_TYPE_INTERFACE_Link, PW_VERSION_LINK, &properties->dict, 0)));
    pw_properties_free(properties);
    return true;
  });
}

}  // namespace

std::unique_ptr<ScreenDouble> ScreenDouble::open(const PipeWireDaemon& daemon, const QImage& picture,
                                                 spa_video_format format) {
  auto screen = std::make_unique<Screen>(daemon.connect(), picture, format);
  EXPECT_TRUE(waitUntil([&] { return screen->node() != SPA_ID_INVALID; })) << "there is no screen";
  return screen;
}

}  // namespace Nimbrel::Testing
