#include "Support/Movies.h"

#include "Linux/Media/InputFile.h"
#include "Linux/Media/MediaInput.h"
#include "Linux/Media/MovieEncoder.h"
#include "Linux/Media/SampleConverter.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Nimbrel::Testing {

namespace {

using namespace Nimbrel::Media;

constexpr int fieldsAcross = 4;
constexpr int fieldsDown = 4;
constexpr double clickLength = 0.005;
constexpr std::int16_t clickLevel = 20'000;

void expectDone(const std::optional<Error>& failure) { EXPECT_FALSE(failure) << failure->message; }

void addPicture(MovieEncoder& encoder, const QImage& image, double time) {
  const Frame frame(av_frame_alloc());
  frame->format = AV_PIX_FMT_0RGB32;
  frame->width = image.width();
  frame->height = image.height();
  frame->data[0] = const_cast<std::uint8_t*>(image.constBits());
  frame->linesize[0] = static_cast<int>(image.bytesPerLine());
  expectDone(encoder.addPicture(*frame, pictureTicks(time)));
}

void addSound(MovieEncoder& encoder, const MadeMovie::Sound& sound) {
  auto samples = clickingSound(sound);
  const Frame frame(av_frame_alloc());
  frame->format = AV_SAMPLE_FMT_S16;
  frame->sample_rate = sound.sampleRate;
  frame->nb_samples = static_cast<int>(std::ssize(samples) / sound.channels);
  av_channel_layout_default(&frame->ch_layout, sound.channels);
  frame->data[0] = reinterpret_cast<std::uint8_t*>(samples.data());
  expectDone(encoder.addSound(*frame, 0, frame->nb_samples));
}

MovieFormat formatOf(const MadeMovie& movie) {
  MovieFormat format;
  if (!movie.times.empty()) format.pictures = {.width = movie.size.width(), .height = movie.size.height()};
  if (movie.sound) format.sound = {.sampleRate = movie.sound->sampleRate, .channels = movie.sound->channels};
  format.displayMatrix = movie.displayMatrix;
  return format;
}

/// What the brightness in the middle of each field says.
int numberOf(const AVFrame& picture) {
  int number = 0;
  for (int field = 0; field < fieldsAcross * fieldsDown; ++field) {
    const int x = (2 * (field % fieldsAcross) + 1) * picture.width / (2 * fieldsAcross);
    const int y = (2 * (field / fieldsAcross) + 1) * picture.height / (2 * fieldsDown);
    if (picture.data[0][y * picture.linesize[0] + x] > 128) number |= 1 << field;
  }
  return number;
}

MediaInput opened(const std::string& path) {
  auto input = MediaInput::open(path);
  EXPECT_TRUE(input) << path << ": " << input.error().message;
  return std::move(input).value();
}

/// Calls for each decoded frame of a kind.
template <class Visitor>
void forEachFrame(MediaInput& input, MediaInput::Kind kind, Visitor visit) {
  expectDone(input.choose(kind));
  while (true) {
    const auto frame = input.next();
    ASSERT_TRUE(frame) << frame.error().message;
    if (!frame.value()) return;
    visit(*frame.value());
  }
}

void readPictures(const std::string& path, ReadMovie& movie) {
  auto input = opened(path);
  movie.duration = input.duration();
  if (!input.has(MediaInput::Kind::Pictures)) return;
  forEachFrame(input, MediaInput::Kind::Pictures, [&](const DecodedFrame& picture) {
    movie.size = {picture.frame->width, picture.frame->height};
    movie.pictures.push_back({.number = numberOf(*picture.frame), .time = picture.time});
    movie.picturesEnd = picture.time + picture.length.value_or(0);
  });
  if (const auto* matrix = input.displayMatrix()) {
    std::copy_n(matrix, 9, movie.displayMatrix.emplace().begin());
  }
}

void readSound(const std::string& path, ReadMovie& movie) {
  auto input = opened(path);
  if (!input.has(MediaInput::Kind::Sound)) return;
  SampleConverter converter;
  forEachFrame(input, MediaInput::Kind::Sound, [&](const DecodedFrame& sound) {
    if (movie.sound.empty()) movie.soundStart = sound.time;
    movie.sampleRate = sound.frame->sample_rate;
    const auto samples = converter.samples(*sound.frame);
    ASSERT_TRUE(samples);
    const auto channels = static_cast<std::size_t>(sound.frame->ch_layout.nb_channels);
    for (std::size_t i = 0; i < samples.value().size(); i += channels) movie.sound.push_back(samples.value()[i]);
  });
}

}  // namespace

QImage numberedPicture(int number, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  for (int field = 0; field < fieldsAcross * fieldsDown; ++field) {
    const int left = field % fieldsAcross * size.width() / fieldsAcross;
    const int top = field / fieldsAcross * size.height() / fieldsDown;
    const auto colour = (number >> field & 1) != 0 ? Qt::white : Qt::black;
    painter.fillRect(left, top, size.width() / fieldsAcross + 1, size.height() / fieldsDown + 1, colour);
  }
  return image;
}

int numberIn(const QImage& picture) {
  int number = 0;
  for (int field = 0; field < fieldsAcross * fieldsDown; ++field) {
    const int x = (2 * (field % fieldsAcross) + 1) * picture.width() / (2 * fieldsAcross);
    const int y = (2 * (field / fieldsAcross) + 1) * picture.height() / (2 * fieldsDown);
    if (qGreen(picture.pixel(x, y)) > 128) number |= 1 << field;
  }
  return number;
}

std::vector<double> steadyTimes(double end, int framesPerSecond) {
  std::vector<double> times;
  for (int i = 0; i < std::lround(end * framesPerSecond); ++i)
    times.push_back(static_cast<double>(i) / framesPerSecond);
  return times;
}

std::vector<std::int16_t> clickingSound(const MadeMovie::Sound& sound) {
  const auto at = [&](double time) { return static_cast<std::size_t>(std::llround(time * sound.sampleRate)); };
  const auto channels = static_cast<std::size_t>(sound.channels);
  std::vector<std::int16_t> samples(at(sound.end) * channels);
  for (const double click : sound.clicks) {
    for (std::size_t i = at(click); i < std::min(at(click + clickLength), at(sound.end)); ++i) {
      const auto level = (i - at(click)) / 12 % 2 == 0 ? clickLevel : static_cast<std::int16_t>(-clickLevel);
      std::fill_n(samples.begin() + static_cast<std::ptrdiff_t>(i * channels), channels, level);
    }
  }
  return samples;
}

void writeMovie(const std::string& path, const MadeMovie& movie) {
  auto made = MovieEncoder::make(formatOf(movie));
  ASSERT_TRUE(made) << made.error().message;
  auto& encoder = made.value();
  expectDone(encoder.open(path, MovieFile::Form::IndexInFront));
  if (movie.sound) addSound(encoder, *movie.sound);
  for (std::size_t i = 0; i < movie.times.size(); ++i) {
    addPicture(encoder, movie.picture(static_cast<int>(i), movie.size), movie.times[i]);
  }
  expectDone(encoder.finish(pictureTicks(movie.end)));
}

void repeatMovie(const std::string& source, const std::string& target, int times) {
  auto file = MovieFile::create(target, MovieFile::Form::IndexInFront);
  ASSERT_TRUE(file);
  const AVStream* track = nullptr;
  const Packet packet(av_packet_alloc());
  for (int round = 0; round < times; ++round) {
    const auto input = openInput(source);
    ASSERT_TRUE(input);
    const AVStream& from = *input.value()->streams[0];
    if (!track) {
      track = file.value().addTrack(*from.codecpar, from.time_base);
      expectDone(file.value().begin());
    }
    for (; av_read_frame(input.value().get(), packet.get()) == 0; av_packet_unref(packet.get())) {
      if (packet->stream_index != from.index) continue;
      packet->pts += round * from.duration;
      packet->dts += round * from.duration;
      expectDone(file.value().write(*packet, *track, from.time_base));
    }
  }
  expectDone(file.value().end());
}

void copyAsMatroska(const std::string& source, const std::string& target) {
  const auto input = openInput(source);
  ASSERT_TRUE(input);
  AVFormatContext* made = nullptr;
  ASSERT_GE(avformat_alloc_output_context2(&made, nullptr, "matroska", nullptr), 0);
  const OutputFormat output(made);
  ASSERT_GE(avio_open(&output->pb, ("file:" + target).c_str(), AVIO_FLAG_WRITE), 0);
  const AVStream& from = *input.value()->streams[0];
  AVStream* track = avformat_new_stream(output.get(), nullptr);
  ASSERT_GE(avcodec_parameters_copy(track->codecpar, from.codecpar), 0);
  track->codecpar->codec_tag = 0;
  ASSERT_GE(avformat_write_header(output.get(), nullptr), 0);
  const Packet packet(av_packet_alloc());
  for (; av_read_frame(input.value().get(), packet.get()) == 0; av_packet_unref(packet.get())) {
    if (packet->stream_index != from.index) continue;
    av_packet_rescale_ts(packet.get(), from.time_base, track->time_base);
    packet->stream_index = track->index;
    ASSERT_GE(av_write_frame(output.get(), packet.get()), 0);
  }
  ASSERT_GE(av_write_trailer(output.get()), 0);
}

std::vector<int> ReadMovie::numbers() const {
  std::vector<int> result;
  for (const auto& picture : pictures) result.push_back(picture.number);
  return result;
}

double ReadMovie::soundEnd() const {
  return sampleRate == 0 ? 0 : soundStart + static_cast<double>(sound.size()) / sampleRate;
}

std::vector<double> ReadMovie::clicks() const {
  constexpr int loud = clickLevel / 3;
  constexpr double pause = 0.03;
  std::vector<double> result;
  double lastLoud = -pause;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    if (std::abs(int{sound[i]}) < loud) continue;
    const double time = soundStart + static_cast<double>(i) / sampleRate;
    if (time - lastLoud >= pause) result.push_back(time);
    lastLoud = time;
  }
  return result;
}

ReadMovie readMovie(const std::string& path) {
  ReadMovie movie;
  readPictures(path, movie);
  readSound(path, movie);
  return movie;
}

}  // namespace Nimbrel::Testing
