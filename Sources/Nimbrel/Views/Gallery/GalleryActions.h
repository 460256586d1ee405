#pragma once

#include "Store/Store.h"

#include <QObject>

#include <functional>

namespace Nimbrel {

/// What can be done with the shots of the gallery. What is shown or handed out waits for the owner's consent where a
/// shot is protected. What another window does leaves as a signal; while nobody listens to it, that cannot be done.
/// Main thread.
class GalleryActions final : public QObject {
  Q_OBJECT

 public:
  /// The store is borrowed and must outlive the object.
  explicit GalleryActions(Store& store, QObject* parent = nullptr);

  void open(const ShotPtr& shot);
  void reveal(const ShotPtr& shot);
  void copyImage(const ShotPtr& shot);
  /// The same, and calls `then` when it is done; not where the owner refuses.
  void copyImageThen(const ShotPtr& shot, const std::function<void()>& then);
  void copyText(const ShotPtr& shot);
  void edit(const ShotPtr& shot);
  void pin(const ShotPtr& shot);
  void share(const ShotPtr& shot);
  void quickLook();
  /// Makes it a favourite if it was none when this value was read, else no longer one.
  void toggleFavorite(const ShotPtr& shot);

  [[nodiscard]] bool canEdit() const;
  [[nodiscard]] bool canPin() const;
  [[nodiscard]] bool canShare() const;

 Q_SIGNALS:
  void editRequested(const Nimbrel::ShotPtr& shot);
  void pinRequested(const Nimbrel::ShotPtr& shot);
  void shareRequested(const Nimbrel::ShotPtr& shot);
  /// For what is selected, or everything that is shown. Whoever answers asks for consent.
  void quickLookRequested();

 private:
  /// As the catalogue has it by now: while a menu was open the shot may have moved, or turned out to be sensitive.
  [[nodiscard]] ShotPtr current(const ShotPtr& shot) const;
  void withAccess(const ShotPtr& shot, const std::function<void(const Shot&)>& action);
  using Request = void (GalleryActions::*)(const ShotPtr&);
  void request(const ShotPtr& shot, Request signal);

  Store& store_;
};

}  // namespace Nimbrel
