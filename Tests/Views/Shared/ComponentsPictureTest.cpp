#include "Views/Shared/BusyRing.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/Chip.h"
#include "Views/Shared/GroupedForm.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Placeholder.h"
#include "Views/Shared/SegmentedControl.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QSlider>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

namespace Nimbrel {

namespace {

/// All components in one window, light and dark, at both scales.
class ComponentsPictureTest : public ::testing::TestWithParam<std::tuple<bool, int>> {
 protected:
  ComponentsPictureTest() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    // The palette follows in a later turn.
    QCoreApplication::sendPostedEvents();
    addButtons();
    addControls();
    addFields();
    addTable();
    addForm();
    column_->addWidget(new Placeholder(QStringLiteral("checkmark.circle"), QStringLiteral("Nothing to Shrink"),
                                       QStringLiteral("Everything is already HEIC.")));
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    window_.setFocus();
  }
  ~ComponentsPictureTest() override { Theme::shared().setAppearance({}); }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  [[nodiscard]] static QImage picture(QWidget& widget) {
    QImage image(widget.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    image.fill(Qt::transparent);
    widget.render(&image);
    return image;
  }
  static void keep(const QImage& image, const QString& what) {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto name =
        QStringLiteral("%1-%2-%3x.png")
            .arg(what, isDark() ? QStringLiteral("dark") : QStringLiteral("light"), QString::number(scale()));
    EXPECT_TRUE(image.save(folder.filePath(name)));
  }
  /// The colour at a place of a widget, from its upper left corner.
  [[nodiscard]] QColor at(const QImage& image, const QWidget& widget, QPoint place) const {
    return image.pixelColor(widget.mapTo(&window_, place) * scale());
  }

  QHBoxLayout* addRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(Measures::step12);
    column_->addLayout(row);
    return row;
  }

  void addButtons() {
    auto* row = addRow();
    default_ = new QPushButton(QStringLiteral("Save Copy"));
    setVariant(*default_, ButtonVariant::Default);
    plain_ = new QPushButton(QStringLiteral("Cancel"));
    auto* disabled = new QPushButton(QStringLiteral("Cancel"));
    disabled->setEnabled(false);
    auto* destructive = new QPushButton(QStringLiteral("Move to Trash"));
    setVariant(*destructive, ButtonVariant::Destructive);
    auto* small =
        new QPushButton(Symbols::icon(QStringLiteral("display"), {.normal = Token::Text}), QStringLiteral("Screen"));
    setButtonSize(*small, ButtonSize::Small);
    icon_ = new IconButton(QStringLiteral("pin"), QStringLiteral("Pin to Screen"));
    auto* dead = new IconButton(QStringLiteral("text.viewfinder"), QStringLiteral("Copy Text"));
    dead->setEnabled(false);
    auto* tool = new QToolButton;
    tool->setIcon(Symbols::icon(QStringLiteral("sidebar.left")));
    tool->setIconSize({Measures::toolSymbol, Measures::toolSymbol});
    for (QWidget* widget :
         {static_cast<QWidget*>(default_), static_cast<QWidget*>(plain_), static_cast<QWidget*>(disabled),
          static_cast<QWidget*>(destructive), static_cast<QWidget*>(small), static_cast<QWidget*>(icon_),
          static_cast<QWidget*>(dead), static_cast<QWidget*>(tool),
          static_cast<QWidget*>(new LinkButton(QStringLiteral("Copy All")))}) {
      row->addWidget(widget);
    }
  }

  void addControls() {
    auto* row = addRow();
    off_ = new QCheckBox;
    on_ = new QCheckBox;
    on_->setChecked(true);
    auto* dead = new QCheckBox;
    dead->setChecked(true);
    dead->setEnabled(false);
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setRange(0, 100);
    slider_->setValue(45);
    segments_ = new SegmentedControl;
    segments_->addSegment(QStringLiteral("arrow.up.right"), QStringLiteral("Arrow"));
    segments_->addSegment(QStringLiteral("1.circle"), QStringLiteral("Step"));
    segments_->addSegment(QStringLiteral("crop"), QStringLiteral("Crop"));
    for (QWidget* widget :
         {static_cast<QWidget*>(off_), static_cast<QWidget*>(on_), static_cast<QWidget*>(dead),
          static_cast<QWidget*>(slider_), static_cast<QWidget*>(segments_), static_cast<QWidget*>(new BusyRing)}) {
      row->addWidget(widget);
    }
  }

  void addFields() {
    auto* row = addRow();
    field_ = new QLineEdit;
    field_->setPlaceholderText(QStringLiteral("Add tag"));
    auto* dead = new QLineEdit(QStringLiteral("Label"));
    dead->setEnabled(false);
    picker_ = new QComboBox;
    picker_->addItems({QStringLiteral("90 days"), QStringLiteral("1 year")});
    row->addWidget(field_);
    row->addWidget(dead);
    row->addWidget(picker_);
    chip_ = new Chip(QStringLiteral("reference"));
    row->addWidget(chip_);
  }

  void addTable() {
    table_ = new QTableWidget(2, 2);
    table_->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Size")});
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(Measures::tableRowHeight);
    table_->setShowGrid(false);
    table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setItem(0, 0, new QTableWidgetItem(QStringLiteral("halden-budget.png")));
    table_->setItem(1, 0, new QTableWidgetItem(QStringLiteral("Export failed.png")));
    table_->setItem(0, 1, new QTableWidgetItem(QStringLiteral("2.4 MB")));
    table_->setItem(1, 1, new QTableWidgetItem(QStringLiteral("310 KB")));
    table_->selectRow(1);
    table_->setFixedHeight(Measures::tableHeaderHeight + 3 * Measures::tableRowHeight);
    column_->addWidget(table_);
  }

  void addForm() {
    auto* form = new GroupedForm;
    form->addSection(QStringLiteral("Library"));
    form->addToggle(QStringLiteral("File new screenshots automatically"), QStringLiteral("Into folders by day."));
    form->addValueRow(QStringLiteral("Folder"), QStringLiteral("/home/mira/Pictures"));
    auto* picker = new QComboBox;
    picker->addItem(QStringLiteral("Newest First"));
    form->addRow(QStringLiteral("Sort"), picker, GroupedForm::Fit::Fill);
    column_->addWidget(form);
  }

  QWidget window_;
  QVBoxLayout* column_ = new QVBoxLayout(&window_);
  QPushButton* default_ = nullptr;
  QPushButton* plain_ = nullptr;
  IconButton* icon_ = nullptr;
  QCheckBox* off_ = nullptr;
  QCheckBox* on_ = nullptr;
  QSlider* slider_ = nullptr;
  SegmentedControl* segments_ = nullptr;
  QLineEdit* field_ = nullptr;
  QComboBox* picker_ = nullptr;
  Chip* chip_ = nullptr;
  QTableWidget* table_ = nullptr;
};

TEST_P(ComponentsPictureTest, AreDrawnInTheTokensOfTheTheme) {
  const auto image = picture(window_);
  keep(image, QStringLiteral("components"));
  EXPECT_EQ(image.pixelColor(2, 2), themeColor(Token::Window));
  EXPECT_EQ(at(image, *default_, {5, 14}), themeColor(Token::AccentFill));
  EXPECT_EQ(at(image, *plain_, {5, 14}), themeColor(Token::Control));
  EXPECT_EQ(at(image, *plain_, {0, 14}), themeColor(Token::Border));
  EXPECT_EQ(at(image, *icon_, {8, 21}), themeColor(Token::Control));
  EXPECT_EQ(at(image, *field_, {4, 14}), themeColor(Token::Base));
  EXPECT_EQ(at(image, *picker_, {5, picker_->height() / 2}), themeColor(Token::Control));
  EXPECT_EQ(at(image, *chip_, {4, chip_->height() / 2}), themeColor(Token::Quaternary));
  EXPECT_EQ(at(image, *on_, {8, on_->height() / 2}), themeColor(Token::AccentFill));
  EXPECT_EQ(at(image, *on_, {24, on_->height() / 2}), themeColor(Token::OnAccent));
  EXPECT_EQ(at(image, *off_, {10, off_->height() / 2}), themeColor(Token::Glyph));
  EXPECT_EQ(at(image, *off_, {26, off_->height() / 2}), themeColor(Token::Track));
  EXPECT_EQ(at(image, *slider_, {5, slider_->height() / 2}), themeColor(Token::Accent));
  EXPECT_EQ(at(image, *table_, {6, Measures::tableHeaderHeight + 40}), themeColor(Token::AccentRow));
  EXPECT_EQ(at(image, *table_, {6, Measures::tableHeaderHeight + 10}), themeColor(Token::Base));
  EXPECT_EQ(at(image, *segments_->segment(0), {6, 10}), themeColor(Token::Base));
  EXPECT_EQ(at(image, *segments_->segment(1), {6, 10}), themeColor(Token::Quaternary));
}

TEST_P(ComponentsPictureTest, MenusHighlightInTheAccentAndWarnInRed) {
  QMenu menu;
  menu.addSection(QStringLiteral("View As"));
  auto* grid = menu.addAction(Symbols::icon(QStringLiteral("square.grid.2x2")), QStringLiteral("Grid"));
  grid->setCheckable(true);
  grid->setChecked(true);
  auto* medium = menu.addAction(QStringLiteral("Medium Thumbnails"));
  medium->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
  menu.addAction(QStringLiteral("Save This Search"))->setEnabled(false);
  menu.addSeparator();
  menu.addMenu(QStringLiteral("Add to Project"))->addAction(QStringLiteral("Halden Launch"));
  auto* trash = menu.addAction(Symbols::icon(QStringLiteral("trash"), {.normal = Token::Danger}),
                               QStringLiteral("Move to Trash"));
  setDestructive(*trash);
  menu.popup({});
  menu.setActiveAction(medium);
  const auto image = picture(menu);
  keep(image, QStringLiteral("components-menu"));
  const auto colorIn = [&](const QAction& action, QPoint place) {
    return image.pixelColor((menu.actionGeometry(const_cast<QAction*>(&action)).topLeft() + place) * scale());
  };
  EXPECT_EQ(colorIn(*medium, {4, 13}), themeColor(Token::AccentFill));
  EXPECT_EQ(colorIn(*grid, {1, 2}), themeColor(Token::Popover));
  EXPECT_EQ(menu.actionGeometry(grid).height(), Measures::menuItemHeight);
}

INSTANTIATE_TEST_SUITE_P(Looks, ComponentsPictureTest, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace

}  // namespace Nimbrel
