#include "Reader/TextReader.h"

#include "Reader/LineCrop.h"
#include "Reader/LineMemory.h"
#include "Reader/LineReader.h"
#include "Reader/PageLines.h"
#include "Reader/WorkTime.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <numeric>
#include <thread>

namespace Nimbrel::Reader {

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

/// The indices of the lines, those first that take longest: so the threads end at about the same time.
std::vector<std::size_t> longestFirst(const std::vector<PageLine>& lines) {
  std::vector<std::size_t> order(lines.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto effort = [&](std::size_t i) {
    const auto& box = lines[i].line.box;
    return static_cast<double>(box.width()) / box.height();
  };
  std::ranges::stable_sort(order, std::greater{}, effort);
  return order;
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

struct TextReader::Engines {
  std::vector<std::unique_ptr<LineReader>> readers;  ///< one for each thread
  LineMemory memory;

  std::string read(const QImage& picture, const PageLine& line, LineReader& reader) {
    const auto crop = cropOf(picture, line.line, line.limit);
    auto words = memory.wordsOf(crop.grey);
    if (!words) {
      words = reader.read(crop.grey);
      memory.keep(crop.grey, *words);
    }
    return textOf(inPicture(std::move(*words), crop), line.line);
  }
};

TextReader::TextReader(const std::string& languages, std::chrono::seconds longest)
    : longest_(longest), engines_(std::make_unique<Engines>()) {
  auto& readers = engines_->readers;
  readers.resize(threadCount());
  inThreads(readers.size(), readers.size(),
            [&](std::size_t, std::size_t i) { readers[i] = std::make_unique<LineReader>(languages); });
  std::erase_if(readers, [](const auto& reader) { return !reader->isReady(); });
}

TextReader::~TextReader() = default;

bool TextReader::isReady() const { return !engines_->readers.empty(); }

std::vector<TextBlock> TextReader::read(const QImage& picture, const std::vector<QRect>& blanked) {
  if (picture.width() < 2 || picture.height() < 2 || !isReady()) return {};
  const WorkTime time;
  const auto lines = linesOnPage(picture, blanked);
  const auto order = longestFirst(lines);
  const auto longest = longest_ * engines_->readers.size();
  std::vector<std::string> texts(lines.size());
  inThreads(engines_->readers.size(), lines.size(), [&](std::size_t thread, std::size_t i) {
    if (time.spent() >= longest) return;
    texts[order[i]] = engines_->read(picture, lines[order[i]], *engines_->readers[thread]);
  });
  std::vector<TextBlock> blocks;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!texts[i].empty()) blocks.push_back(blockOf(lines[i].line.box, picture, std::move(texts[i])));
  }
  return blocks;
}

}  // namespace Nimbrel::Reader
