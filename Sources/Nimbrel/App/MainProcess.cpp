#include "App/MainProcess.h"

#include <QApplication>
#include <QFile>

#include <utility>

namespace Nimbrel {

namespace {

/// Beside the program.
UpdateSettings readUpdateSettings() {
  const auto file = QCoreApplication::applicationDirPath() + QStringLiteral("/nimbrel-info.json");
  return UpdateSettings::read(QFile::encodeName(file).toStdString());
}

}  // namespace

WindowServices::WindowServices(const Services& services)
    : pasteboard(*services.pasteboard),
      workspace(*services.workspace),
      installedApplications(*services.installedApplications) {}

MainProcess::MainProcess(Store& store, WindowServices services)
    : store_(store),
      services_(services),
      icons_(services.installedApplications),
      updates_(readUpdateSettings(), store, services.workspace),
      window_(store, icons_, parts()),
      activity_(store) {
  connect(&window_, &ContentView::closed, this, &MainProcess::quit);
  connect(&store, &Store::windowRequested, this, &MainProcess::raise);
  connect(&store, &Store::hidingRequested, this, &MainProcess::hideWindows);
  connect(&store, &Store::unhidingRequested, this, &MainProcess::unhideWindows);
}

WindowParts MainProcess::parts() {
  WindowParts parts;
  parts.checkForUpdates = [this] { updates_.checkForUpdates(); };
  parts.quit = [this] { quit(); };
  return parts;
}

void MainProcess::raise() {
  if (isQuitting_) return;
  window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
  window_.show();
  window_.raise();
  window_.activateWindow();
}

void MainProcess::quit() {
  if (std::exchange(isQuitting_, true)) return;
  for (auto* widget : QApplication::topLevelWidgets()) widget->hide();
  services_.pasteboard.handOver(this, [] { QCoreApplication::exit(); });
}

void MainProcess::hideWindows() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    if (!widget->isVisible()) continue;
    hidden_.emplace_back(widget);
    widget->hide();
  }
}

void MainProcess::unhideWindows() {
  const auto hidden = std::exchange(hidden_, {});
  if (isQuitting_) return;
  for (const auto& widget : hidden) {
    if (!widget) continue;
    // The user goes on where the capture was taken.
    const bool showed = widget->testAttribute(Qt::WA_ShowWithoutActivating);
    widget->setAttribute(Qt::WA_ShowWithoutActivating);
    widget->show();
    widget->setAttribute(Qt::WA_ShowWithoutActivating, showed);
  }
}

}  // namespace Nimbrel
