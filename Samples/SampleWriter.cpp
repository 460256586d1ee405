#include "Samples/SampleWriter.h"

#include "Samples/Canvas.h"
#include "Samples/SampleFile.h"
#include "Samples/SampleLibrary.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

const QString suiteFolder = u".config/Nimbrel"_s;
const QString suiteName = u"com.halderquist.nimbrel.json"_s;

/// The pictures of a former run, whatever they have been renamed to or filed as since.
QSet<QString> formerPictures(const QDir& home) {
  QSet<QString> pictures;
  const auto collect = [&](const QString& folder, QDirIterator::IteratorFlags flags) {
    QDirIterator entry(home.filePath(folder), {u"*.png"_s}, QDir::Files | QDir::NoSymLinks, flags);
    while (entry.hasNext()) {
      const auto path = entry.next();
      if (isSamplePicture(path)) pictures.insert(path);
    }
  };
  collect(desktopFolder(), QDirIterator::NoIteratorFlags);
  collect(libraryFolder(), QDirIterator::Subdirectories);
  return pictures;
}

std::optional<Error> write(const QDir& home, const Sample& sample, const QDateTime& taken) {
  const auto path = home.filePath(pathOf(sample, taken));
  if (auto error = makeFolder(QFileInfo(path).path())) return error;
  Canvas canvas(sample.size, sample.scale);
  sample.draw(canvas, {.taken = taken, .variant = sample.variant});
  return writePicture(path, canvas.finish(), taken, sample.place == Place::desktop ? sample.words : QStringView());
}

std::optional<Error> writeSuite(const QDir& home) {
  const auto folder = home.filePath(suiteFolder);
  if (auto error = makeFolder(folder)) return error;
  if (!QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
    return Error{"cannot protect the folder " + folder.toStdString()};
  }
  const QJsonObject suite{{u"libraryRoot"_s, home.filePath(libraryFolder())},
                          {u"sources"_s, QJsonArray{home.filePath(desktopFolder())}}};
  return writeFile(folder + u'/' + suiteName, QJsonDocument(suite).toJson());
}

}  // namespace

Result<int> writeSampleHome(const std::string& folder, const QDateTime& now) {
  if (!fontsAreInstalled()) return Error{"the DejaVu fonts are not installed"};
  const QDir home(QFile::decodeName(folder.c_str()));
  auto former = formerPictures(home);
  const auto suite = home.filePath(suiteFolder) + u'/' + suiteName;
  if (former.isEmpty() && QFileInfo::exists(suite)) {
    return Error{suite.toStdString() + " is there, but no sample library: that looks like a real home"};
  }
  for (const auto& sample : samples()) {
    const auto taken = dateOf(sample, now);
    if (auto error = write(home, sample, taken)) return *error;
    former.remove(home.filePath(pathOf(sample, taken)));
  }
  for (const auto& picture : std::as_const(former)) {
    if (!QFile::remove(picture)) return Error{"cannot remove " + picture.toStdString()};
  }
  if (auto error = writeSuite(home)) return *error;
  return static_cast<int>(samples().size());
}

}  // namespace Nimbrel::Samples
