#include "Views/Window/NoRecordingSheet.h"

#include "Views/Shared/Placeholder.h"

#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr QSize wholeSize(420, 260);

}  // namespace

NoRecordingSheet::NoRecordingSheet(QWidget* window) : QDialog(window) {
  setObjectName(QStringLiteral("noRecording"));
  setWindowTitle(QStringLiteral("No Recording"));
  setWindowModality(Qt::WindowModal);
  setFixedSize(wholeSize);
  auto* column = new QVBoxLayout(this);
  column->addWidget(new Placeholder(QStringLiteral("film"), QStringLiteral("No Recording"), QString(),
                                    Placeholder::Size::Normal, this));
}

}  // namespace Nimbrel
