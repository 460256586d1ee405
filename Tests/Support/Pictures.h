#pragma once

#include <QImage>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A picture with enough structure to be told from others by its looks: bars and a gradient that depend on the seed.
[[nodiscard]] QImage picture(int width, int height, int seed = 0);

/// The same under grain that is different at each pixel, as a camera sees it: large as a PNG.
[[nodiscard]] QImage grainyPicture(int width, int height, int seed = 0);

/// Writes a picture in the format that the extension names; fails the test when that does not work.
void writePicture(const QImage& image, const std::string& path);

/// Both in one.
void writePicture(const std::string& path, int width = 64, int height = 48, int seed = 0);

/// The names of the chunks of a PNG, in their order; those of the pixels once. Fails the test when it is none.
[[nodiscard]] std::vector<std::string> chunksOfPng(const std::string& path);

}  // namespace Nimbrel::Testing
