#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace Nimbrel::Benchmarks {

/// Makes geeqie show thumbnails in a window as large as ours, which it does not do by itself. It only takes settings
/// that it wrote: so it runs once, with a folder, and what it wrote is changed. Ends the program when that does not
/// succeed.
void letGeeqieShowThumbnails(const QProcessEnvironment& environment, const QString& folder);

}  // namespace Nimbrel::Benchmarks
