#pragma once

#include <QImage>
#include <QSize>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A picture that shows a number from 0 to 65535 as black and white fields, which an encoder leaves alone.
[[nodiscard]] QImage numberedPicture(int number, QSize size);

/// The number that such a picture shows, of whatever size.
[[nodiscard]] int numberIn(const QImage& picture);

/// A movie whose pictures show their number, from 0 on, and whose sound is silent but for short clicks.
struct MadeMovie {
  struct Sound {
    int sampleRate = 48000;
    int channels = 2;
    double end = 0;              ///< seconds
    std::vector<double> clicks;  ///< when they begin, in seconds
  };

  QSize size{160, 120};
  std::vector<double> times;  ///< when each picture is shown, in seconds; without any there is no such track
  double end = 0;             ///< of the last picture
  std::optional<Sound> sound;
  std::optional<std::array<std::int32_t, 9>> displayMatrix;  ///< how it is turned when shown
  QImage (*picture)(int number, QSize size) = numberedPicture;
};

/// The times of pictures at a steady rate from 0 to `end`.
[[nodiscard]] std::vector<double> steadyTimes(double end, int framesPerSecond = 30);

/// The samples of such sound, channels interleaved.
[[nodiscard]] std::vector<std::int16_t> clickingSound(const MadeMovie::Sound& sound);

/// Writes the movie; fails the test when that does not work. An odd size is kept.
void writeMovie(const std::string& path, const MadeMovie& movie);

/// Writes a movie that plays another one so many times without encoding it anew, which is quick to make and slow to
/// work on. Pictures only; fails the test when that does not work.
void repeatMovie(const std::string& source, const std::string& target, int times);

/// Writes the pictures of a movie to a Matroska file, which rounds their times to thousandths of a second; fails the
/// test when that does not work.
void copyAsMatroska(const std::string& source, const std::string& target);

/// What is in a movie, all of it decoded.
struct ReadMovie {
  struct Picture {
    int number = 0;  ///< as numberedPicture() has drawn it
    double time = 0;
  };

  double duration = 0;
  QSize size;
  std::vector<Picture> pictures;
  double picturesEnd = 0;  ///< when the last one is no longer shown
  std::optional<std::array<std::int32_t, 9>> displayMatrix;
  int sampleRate = 0;
  double soundStart = 0;
  std::vector<std::int16_t> sound;  ///< of the first channel

  [[nodiscard]] std::vector<int> numbers() const;
  [[nodiscard]] double soundEnd() const;
  /// When clicks begin, in seconds.
  [[nodiscard]] std::vector<double> clicks() const;
};

/// Reads a movie; fails the test when that does not work.
[[nodiscard]] ReadMovie readMovie(const std::string& path);

}  // namespace Nimbrel::Testing
