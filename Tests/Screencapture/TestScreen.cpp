#include "Screencapture/TestScreen.h"

#include "Screencapture/PixelMemory.h"
#include "Support/Waiting.h"

#include <QColorSpace>
#include <QProcess>

#include <array>
#include <filesystem>

namespace Nimbrel::Testing {

using Screencapture::X11Display;
using Screencapture::XcbOwned;

namespace {

void waitForServer(const X11Display& display) {
  XcbOwned<xcb_get_input_focus_reply_t>(
      xcb_get_input_focus_reply(display.get(), xcb_get_input_focus(display.get()), nullptr));
}

bool isSeen(const X11Display& display, xcb_window_t window) {
  const XcbOwned<xcb_get_window_attributes_reply_t> reply(
      xcb_get_window_attributes_reply(display.get(), xcb_get_window_attributes(display.get(), window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void run(const QString& tool, const QStringList& arguments) {
  QProcess process;
  process.start(tool, arguments);
  EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << process.readAllStandardError().toStdString();
}

}  // namespace

QRgb desktopColour(int x, int y) { return qRgb(x % 256, y % 256, x / 256 * 16 + y / 256); }

::testing::AssertionResult showsDesktop(const QImage& picture, QPoint from) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.pixel(x, y) == desktopColour(from.x() + x, from.y() + y)) continue;
      return ::testing::AssertionFailure() << "another colour at " << x << ", " << y;
    }
  }
  return ::testing::AssertionSuccess();
}

ColourWindow::ColourWindow(const X11Display& display, const QRect& area, const QColor& colour)
    : display_(display), window_(xcb_generate_id(display.get())) {
  const std::uint32_t ground = colour.rgb();
  xcb_create_window(display.get(), XCB_COPY_FROM_PARENT, window_, display.root(), static_cast<std::int16_t>(area.x()),
                    static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                    static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL, &ground);
  // The user is said to have placed it, and the window manager leaves it there.
  constexpr std::uint32_t placedByUser = 1;
  const std::array<std::uint32_t, 18> hints{placedByUser};
  xcb_change_property(display.get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS,
                      32, hints.size(), hints.data());
  xcb_map_window(display.get(), window_);
  display.flush();
  EXPECT_TRUE(waitUntil([this] { return isSeen(display_, window_) && frame() != inside(); }));
}

ColourWindow::~ColourWindow() {
  xcb_destroy_window(display_.get(), window_);
  waitForServer(display_);
}

QRect ColourWindow::inside() const {
  const XcbOwned<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(display_.get(), xcb_get_geometry(display_.get(), window_), nullptr));
  const XcbOwned<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
      display_.get(), xcb_translate_coordinates(display_.get(), window_, display_.root(), 0, 0), nullptr));
  if (!size || !place) return {};
  return {place->dst_x, place->dst_y, size->width, size->height};
}

QRect ColourWindow::frame() const {
  const auto sides = display_.numbers(window_, "_NET_FRAME_EXTENTS");
  if (sides.size() != 4) return inside();
  const auto side = [&](std::size_t index) { return static_cast<int>(sides[index]); };
  return inside().adjusted(-side(0), -side(2), side(1), side(3));
}

void ScreenTest::SetUp() {
  auto display = X11Display::open();
  ASSERT_TRUE(display);
  display_ = std::move(display).value();
  paintDesktop();
}

void ScreenTest::paintDesktop() const {
  auto* connection = display_->get();
  const auto bounds = display_->bounds();
  auto pixels = Screencapture::PixelMemory::make(*display_, bounds.size(), display_->screen().root_depth);
  ASSERT_TRUE(pixels);
  auto& image = pixels.value()->image();
  for (int y = 0; y < bounds.height(); ++y) {
    for (int x = 0; x < bounds.width(); ++x) image.setPixel(x, y, desktopColour(x, y));
  }
  const auto pixmap = xcb_generate_id(connection);
  const auto context = xcb_generate_id(connection);
  xcb_create_pixmap(connection, display_->screen().root_depth, pixmap, display_->root(),
                    display_->screen().width_in_pixels, display_->screen().height_in_pixels);
  xcb_create_gc(connection, context, pixmap, 0, nullptr);
  pixels.value()->draw(pixmap, context, bounds);
  xcb_change_window_attributes(connection, display_->root(), XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(connection, 0, display_->root(), 0, 0, 0, 0);
  xcb_free_gc(connection, context);
  waitForServer(*display_);
}

void ScreenTest::addMonitors(const std::vector<Screencapture::Monitor>& monitors) const {
  for (const auto& [name, area, isPrimary] : monitors) {
    // Pixels, and millimetres that nobody asks for.
    const auto geometry =
        QStringLiteral("%1/100x%2/100+%3+%4").arg(area.width()).arg(area.height()).arg(area.x()).arg(area.y());
    const auto title = (isPrimary ? QStringLiteral("*") : QString()) + QString::fromStdString(name);
    run(QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), title, geometry, QStringLiteral("none")});
  }
}

std::unique_ptr<QProcess> ScreenTest::start(const QStringList& options) const {
  return startProgram("nimbrel-screencapture",
                      options + QStringList{QStringLiteral("-d"), QString::fromStdString(path())}, home_.path());
}

std::unique_ptr<QProcess> ScreenTest::startOverlay(const QStringList& options) const {
  auto process = start(options);
  EXPECT_TRUE(waitUntil([this] { return hasOverlay(); })) << process->readAllStandardError().toStdString();
  return process;
}

bool ScreenTest::hasOverlay() const {
  const XcbOwned<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(display_->get(), xcb_query_tree(display_->get(), display_->root()), nullptr));
  if (!reply) return false;
  const auto* windows = xcb_query_tree_children(reply.get());
  for (int i = 0; i < xcb_query_tree_children_length(reply.get()); ++i) {
    if (display_->text(windows[i], "WM_WINDOW_ROLE") == "selection-overlay" && isSeen(*display_, windows[i])) {
      return true;
    }
  }
  return false;
}

int ScreenTest::statusOf(QProcess& process) const {
  if (process.state() != QProcess::NotRunning && !process.waitForFinished()) return -1;
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void ScreenTest::act(const QString& actions) { run(QStringLiteral("xdotool"), actions.split(QLatin1Char(' '))); }

bool ScreenTest::isFolderEmpty() const { return std::filesystem::is_empty(folder_.path()); }

QImage ScreenTest::picture() const {
  auto read = QImage(QString::fromStdString(path()), "png").convertToFormat(QImage::Format_RGB32);
  // The file says that it is sRGB, which pictures that are painted here do not.
  read.setColorSpace({});
  return read;
}

}  // namespace Nimbrel::Testing
