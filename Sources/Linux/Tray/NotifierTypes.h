#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QIcon>
#include <QList>
#include <QString>

namespace Nimbrel {

/// A picture as status notifiers hand it over.
struct NotifierPicture {
  int width = 0;     ///< pixels
  int height = 0;    ///< pixels
  QByteArray bytes;  ///< four of each pixel, from alpha to blue, row by row from the top
};
using NotifierPictures = QList<NotifierPicture>;

/// What is said of an icon under the pointer.
struct NotifierToolTip {
  QString iconName;
  NotifierPictures pictures;
  QString title;
  QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPicture& picture);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& tip);

/// Makes them known to the bus. Any number of times.
void registerNotifierTypes();

/// The icon in the sizes that trays have.
[[nodiscard]] NotifierPictures notifierPictures(const QIcon& icon);

}  // namespace Nimbrel
