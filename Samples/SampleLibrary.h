#pragma once

#include "Samples/Pictures/Pictures.h"

#include <QDateTime>
#include <QSize>
#include <QString>

#include <span>

namespace Nimbrel::Samples {

enum class Place { desktop, library };

/// One picture of the library: what it shows, how large it is, when and by which kind of capture it was taken, where it
/// lies.
struct Sample {
  void (*draw)(Canvas&, const Occasion&);
  int variant = 0;
  /// In points.
  QSize size;
  /// Pixels for each point.
  int scale = 1;
  int daysBefore = 0;
  QTime time;
  Place place = Place::desktop;
  /// The kind of capture of what waits on the desktop, the title of what is filed.
  QStringView words;
};

/// All pictures; no two were taken in the same second.
[[nodiscard]] std::span<const Sample> samples();

/// When a picture was taken, in local time, seen from `now`. Never later than `now`, except in the first minute of a
/// day.
[[nodiscard]] QDateTime dateOf(const Sample& sample, const QDateTime& now);

/// The path below the home that holds the library.
[[nodiscard]] QString pathOf(const Sample& sample, const QDateTime& taken);

/// The folders below the home that pathOf() leads into.
[[nodiscard]] QString desktopFolder();
[[nodiscard]] QString libraryFolder();

}  // namespace Nimbrel::Samples
