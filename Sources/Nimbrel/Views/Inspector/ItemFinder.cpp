#include "Views/Inspector/ItemFinder.h"

#include "Foundation/Background.h"

#include <utility>

namespace Nimbrel {

ItemFinder::ItemFinder(Find find, QObject* parent) : QObject(parent), find_(std::move(find)) {}

void ItemFinder::show(const std::string& text, Timestamp now) {
  if (text == text_) return;
  text_ = text;
  now_ = now;
  Q_EMIT found({});
  begin();
}

void ItemFinder::begin() {
  if (isBusy_ || text_.empty()) return;
  isBusy_ = true;
  using Answer = std::pair<std::string, std::vector<DetectedItem>>;
  // The pool of the process: nothing here has to wait for a long text when the inspector goes.
  inBackground(
      this, *QThreadPool::globalInstance(),
      [find = find_, text = text_, now = now_] {
        auto items = find(text, now);
        return Answer(text, std::move(items));
      },
      [this](const Answer& answer) {
        isBusy_ = false;
        if (answer.first == text_) return Q_EMIT found(answer.second);
        begin();
      });
}

}  // namespace Nimbrel
