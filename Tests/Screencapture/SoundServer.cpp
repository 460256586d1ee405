#include "Screencapture/SoundServer.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <numbers>
#include <vector>

namespace Nimbrel::Testing {

namespace {

constexpr int rate = 48000;
constexpr int toneSeconds = 30;
constexpr double frequency = 440;

std::vector<std::int16_t> tone() {
  std::vector<std::int16_t> samples(std::size_t{rate} * toneSeconds);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const auto phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / rate;
    samples[i] = static_cast<std::int16_t>(std::sin(phase) * 16000);
  }
  return samples;
}

/// Whether it answers, which takes longer than until it can be reached.
bool isReady() {
  QProcess question;
  question.start(QStringLiteral("pactl"), {QStringLiteral("info")});
  return question.waitForFinished() && question.exitCode() == 0;
}

}  // namespace

SoundServer::SoundServer()
    : address_("PULSE_SERVER", "unix:" + folder_.path("socket")),
      server_(
          {"env", "HOME=" + folder_.path(), "XDG_RUNTIME_DIR=" + folder_.path(), "XDG_CONFIG_HOME=" + folder_.path(),
           // It would look for a bus first, for a while.
           "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent/bus", "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent/bus",
           "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disable-shm=yes",
           "--realtime=no", "--high-priority=no", "-L", "module-null-sink norewinds=1", "-L",
           "module-native-protocol-unix auth-anonymous=1 socket=" + folder_.path("socket")}) {
  EXPECT_TRUE(waitUntil([this] { return std::filesystem::exists(folder_.path("socket")) && isReady(); }))
      << "there is no sound server";
}

void SoundServer::playTone() {
  const auto samples = tone();
  const auto* bytes = reinterpret_cast<const char*>(samples.data());
  const auto file = folder_.write("tone", {bytes, samples.size() * sizeof samples.front()});
  player_ = std::make_unique<DesktopClient>(std::vector<std::string>{
      "pacat", "--playback", "--raw", "--format=s16le", "--rate=" + std::to_string(rate), "--channels=1", file});
}

}  // namespace Nimbrel::Testing
