#include "Views/Window/ImportPanel.h"

#include "Model/ShotFile.h"

#include <QFile>
#include <QFileDialog>

#include <string>
#include <vector>

namespace Nimbrel {

namespace {

QString imageFilter() {
  QStringList patterns;
  for (const auto type : ShotFile::imageTypes()) {
    const auto suffix = QString::fromUtf8(type.data(), static_cast<qsizetype>(type.size()));
    patterns << QStringLiteral("*.") + suffix << QStringLiteral("*.") + suffix.toUpper();
  }
  return QStringLiteral("Images (%1)").arg(patterns.join(QLatin1Char(' ')));
}

}  // namespace

void openImportPanel(Store& store, QWidget& window) {
  auto* panel = new QFileDialog(&window, QStringLiteral("Import Files"));
  panel->setObjectName(QStringLiteral("importPanel"));
  panel->setAttribute(Qt::WA_DeleteOnClose);
  panel->setFileMode(QFileDialog::ExistingFiles);
  panel->setNameFilter(imageFilter());
  QObject::connect(panel, &QFileDialog::filesSelected, &window, [&store](const QStringList& files) {
    std::vector<std::string> paths;
    for (const auto& file : files) paths.push_back(QFile::encodeName(file).toStdString());
    store.importFiles(paths);
  });
  panel->open();
}

}  // namespace Nimbrel
