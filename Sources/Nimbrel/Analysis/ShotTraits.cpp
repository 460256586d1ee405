#include "Analysis/ShotTraits.h"

#include <QtConcurrent/QtConcurrentMap>

#include <algorithm>

namespace Nimbrel {

namespace {

// So few take less time than waking another thread and waiting for it.
constexpr std::size_t shotsOfOneTask = 64;

struct Task {
  std::size_t first;
  std::size_t end;
};

std::vector<Task> tasksFor(std::size_t shots) {
  std::vector<Task> tasks;
  for (std::size_t first = 0; first < shots; first += shotsOfOneTask) {
    tasks.push_back({first, std::min(first + shotsOfOneTask, shots)});
  }
  return tasks;
}

}  // namespace

ShotTraits traitsOf(const Shot& shot) {
  const ShotText text(shot.ocr);
  auto group = ContentGroup::forShot(shot, text);
  const auto collections = collectionsOf(shot, text, group);
  return {std::move(group), collections};
}

std::vector<ShotTraits> traitsOf(const ShotList& shots) {
  std::vector<ShotTraits> traits(shots.size());
  const auto work = [&](const Task& task) {
    for (auto i = task.first; i < task.end; ++i) traits[i] = traitsOf(*shots[i]);
  };
  auto tasks = tasksFor(shots.size());
  if (tasks.size() > 1) {
    QtConcurrent::blockingMap(tasks, work);
  } else {
    std::ranges::for_each(tasks, work);
  }
  return traits;
}

}  // namespace Nimbrel
