// A recording of ten minutes at 1920 x 1080: its silence cut out, beside the ffmpeg command with the same cuts and the
// same settings of the encoder; and the search for that silence, beside bare decoding of the sound.

#include "Measure.h"
#include "ProgramUsage.h"
#include "RecordingMaker.h"

#include "Recording/RecordingProcessor.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {

namespace {

constexpr int rounds = 3;
constexpr double target = 1.1;
constexpr double wholeRecording = 1e6;  // seconds, more than there are
constexpr auto trimRole = "--trim";

[[noreturn]] void giveUp(const std::string& why) {
  std::fprintf(stderr, "%s\n", why.c_str());
  std::exit(EXIT_FAILURE);
}

RecordingProcessor::Composition withoutSilence(const std::string& movie) {
  auto composition = RecordingProcessor::composition(movie, 0, wholeRecording, true);
  if (!composition) giveUp(composition.error().message);
  return std::move(composition).value();
}

/// In a process of its own, so that both are measured in the same way.
int trim(const std::string& movie, const std::string& copy) {
  const auto failure = RecordingProcessor::exportMovie(withoutSilence(movie), copy, {});
  if (failure) giveUp(failure->message);
  return EXIT_SUCCESS;
}

/// What picks the stretches out of a track by the time of its frames.
std::string selection(const RecordingProcessor::Composition& composition) {
  std::string terms;
  for (const auto& [start, end] : composition.stretches) {
    const auto first = QString::number(start, 'f', 6).toStdString();
    const auto last = QString::number(end, 'f', 6).toStdString();
    terms += (terms.empty() ? "" : "+") + ("gte(t," + first + ")*lt(t," + last + ")");
  }
  return "select='" + terms + "'";
}

std::vector<std::string> peerCommand(const std::string& movie, const std::string& copy) {
  const auto chosen = selection(withoutSilence(movie));
  return {"ffmpeg",    "-v",
          "error",     "-y",
          "-i",        movie,
          "-vf",       chosen + ",setpts=N/FRAME_RATE/TB",
          "-af",       "a" + chosen + ",asetpts=N/SR/TB",
          "-c:v",      "libx264",
          "-preset",   "veryfast",
          "-crf",      "18",
          "-bf",       "0",
          "-c:a",      "aac",
          "-b:a",      "128k",
          "-movflags", "+faststart",
          copy};
}

/// Reads and decodes the first track of sound and looks at none of it.
void decodeSound(const std::string& movie) {
  AVFormatContext* file = nullptr;
  if (avformat_open_input(&file, movie.c_str(), nullptr, nullptr) < 0) giveUp("the recording cannot be read");
  avformat_find_stream_info(file, nullptr);
  const AVCodec* codec = nullptr;
  const int track = av_find_best_stream(file, AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
  for (unsigned i = 0; i < file->nb_streams; ++i) {
    if (static_cast<int>(i) != track) file->streams[i]->discard = AVDISCARD_ALL;
  }
  AVCodecContext* decoder = avcodec_alloc_context3(codec);
  avcodec_parameters_to_context(decoder, file->streams[track]->codecpar);
  avcodec_open2(decoder, codec, nullptr);
  AVPacket* packet = av_packet_alloc();
  AVFrame* frame = av_frame_alloc();
  std::size_t samples = 0;
  for (; av_read_frame(file, packet) == 0; av_packet_unref(packet)) {
    avcodec_send_packet(decoder, packet);
    while (avcodec_receive_frame(decoder, frame) == 0) samples += static_cast<std::size_t>(frame->nb_samples);
  }
  use(samples);
  av_frame_free(&frame);
  av_packet_free(&packet);
  avcodec_free_context(&decoder);
  avformat_close_input(&file);
}

Comparison silence(const std::string& movie) {
  return compareCpu(
      "silence found, beside decoding the sound", target, rounds,
      [&] {
        const auto ranges = RecordingProcessor::audibleRanges(movie);
        if (!ranges) giveUp(ranges.error().message);
        use(ranges.value().size());
      },
      [&] { decodeSound(movie); });
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

std::vector<Comparison> trimming(const std::string& program, const std::string& movie) {
  const auto copy = movie + ".trimmed.mov";
  const auto peer = peerCommand(movie, copy);
  std::vector<double> oursWall;
  std::vector<double> oursCpu;
  std::vector<double> peerWall;
  std::vector<double> peerCpu;
  for (int round = 0; round < rounds; ++round) {
    const auto peerUsage = usageOf(peer);
    QFile::remove(QString::fromStdString(copy));
    const auto ours = usageOf({program, trimRole, movie, copy});
    QFile::remove(QString::fromStdString(copy));
    oursWall.push_back(ours.wall);
    oursCpu.push_back(ours.cpu);
    peerWall.push_back(peerUsage.wall);
    peerCpu.push_back(peerUsage.cpu);
  }
  return {{"silence cut out, beside ffmpeg", median(oursWall), median(peerWall), target},
          {"the same, CPU time", median(oursCpu), median(peerCpu), target}};
}

}  // namespace

int compareRecordings(const std::string& program, int minutes) {
  const QTemporaryDir folder;
  const auto movie = folder.filePath(QStringLiteral("recording.mov")).toStdString();
  makeRecording(movie, minutes);
  auto table = trimming(program, movie);
  table.push_back(silence(movie));
  return printTable(table, "seconds, " + std::to_string(minutes) + " minutes");
}

}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  using namespace Nimbrel::Benchmarks;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc == 4 && std::string(argv[1]) == trimRole) return trim(argv[2], argv[3]);
  constexpr int usualMinutes = 10;
  return compareRecordings(argv[0], argc == 2 ? std::max(1, std::atoi(argv[1])) : usualMinutes);
}
