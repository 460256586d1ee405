#include "Reader/TextReader.h"

#include "Reader/Components.h"
#include "Reader/EdgeMask.h"
#include "Reader/LineCrop.h"
#include "Reader/LineFinder.h"
#include "Reader/LineReader.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <numeric>
#include <thread>

namespace Nimbrel::Reader {

struct TextReader::Engines {
  std::vector<std::unique_ptr<LineReader>> readers;
};

namespace {

std::size_t threadCount() { return std::clamp(std::thread::hardware_concurrency(), 1U, 2U); }

/// Does `work(thread, index)` for all indices up to `count`, in order, in several threads.
void inThreads(std::size_t threads, std::size_t count, const std::function<void(std::size_t, std::size_t)>& work) {
  std::atomic<std::size_t> next{0};
  const auto loop = [&](std::size_t thread) {
    for (auto i = next++; i < count; i = next++) work(thread, i);
  };
  std::vector<std::jthread> others;
  for (std::size_t thread = 1; thread < std::min(threads, count); ++thread) others.emplace_back(loop, thread);
  loop(0);
}

void blank(Plane& mask, const std::vector<QRect>& boxes) {
  for (const auto& rect : boxes) {
    const auto box = Box{rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()}.cutTo(
        {0, 0, mask.width(), mask.height()});
    for (int y = box.top; y < box.bottom; ++y) {
      std::fill_n(mask.row(y) + box.left, std::max(0, box.width()), std::uint8_t{0});
    }
  }
}

TextBlock blockOf(const Box& box, const QImage& picture, std::string text) {
  const double width = picture.width();
  const double height = picture.height();
  return {std::move(text), {box.left / width, box.top / height, box.width() / width, box.height() / height}};
}

}  // namespace

TextReader::TextReader(const std::string& languages) : engines_(std::make_unique<Engines>()) {
  engines_->readers.resize(threadCount());
  inThreads(threadCount(), threadCount(),
            [&](std::size_t, std::size_t i) { engines_->readers[i] = std::make_unique<LineReader>(languages); });
}

TextReader::~TextReader() = default;

std::vector<TextBlock> TextReader::read(const QImage& picture, const std::vector<QRect>& blanked) {
  if (picture.width() < 2 || picture.height() < 2) return {};
  auto mask = edgeMask(picture, {0, 0, picture.width(), picture.height()});
  blank(mask, blanked);
  const auto lines = linesOf(componentsOf(mask));
  const auto threads = engines_->readers.size();
  std::vector<LineCrop> crops(lines.size());
  inThreads(threads, lines.size(), [&](std::size_t, std::size_t i) { crops[i] = cropOf(picture, lines[i]); });
  std::vector<std::size_t> order(lines.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater{}, [&](std::size_t i) { return crops[i].grey.width(); });
  std::vector<LineText> texts(lines.size());
  inThreads(threads, lines.size(), [&](std::size_t thread, std::size_t i) {
    texts[order[i]] = engines_->readers[thread]->read(crops[order[i]]);
  });
  std::vector<TextBlock> blocks;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!texts[i].text.empty()) blocks.push_back(blockOf(lines[i].box, picture, std::move(texts[i].text)));
  }
  return blocks;
}

}  // namespace Nimbrel::Reader
