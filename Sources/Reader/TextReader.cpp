#include "Reader/TextReader.h"

#include "Reader/LineCrop.h"
#include "Reader/LineReader.h"
#include "Reader/PageLines.h"

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

TextBlock blockOf(const Box& box, const QImage& picture, std::string text) {
  const double width = picture.width();
  const double height = picture.height();
  return {std::move(text), {box.left / width, box.top / height, box.width() / width, box.height() / height}};
}

std::vector<Word> inPicture(std::vector<Word> words, const LineCrop& crop) {
  for (auto& word : words) {
    word.left = crop.inPicture(word.left);
    word.right = crop.inPicture(word.right);
  }
  return words;
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
  const auto lines = linesOnPage(picture, blanked);
  const auto threads = engines_->readers.size();
  std::vector<LineCrop> crops(lines.size());
  inThreads(threads, lines.size(),
            [&](std::size_t, std::size_t i) { crops[i] = cropOf(picture, lines[i].line, lines[i].limit); });
  std::vector<std::size_t> order(lines.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater{}, [&](std::size_t i) { return crops[i].grey.width(); });
  std::vector<std::string> texts(lines.size());
  inThreads(threads, lines.size(), [&](std::size_t thread, std::size_t i) {
    const auto at = order[i];
    texts[at] = textOf(inPicture(engines_->readers[thread]->read(crops[at].grey), crops[at]), lines[at].line);
  });
  std::vector<TextBlock> blocks;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!texts[i].empty()) blocks.push_back(blockOf(lines[i].line.box, picture, std::move(texts[i])));
  }
  return blocks;
}

}  // namespace Nimbrel::Reader
