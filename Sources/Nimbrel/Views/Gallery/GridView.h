#pragma once

#include "Views/Gallery/CellAccessibility.h"
#include "Views/Gallery/CellPainter.h"
#include "Views/Gallery/GalleryContext.h"
#include "Views/Gallery/GridLayout.h"
#include "Views/Gallery/SnippetRuns.h"
#include "Views/Gallery/VisibleThumbs.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

#include <optional>
#include <unordered_map>
#include <vector>

namespace Nimbrel {

/// The shots in sections, as a grid of cells of which only those on the screen cost anything. The keyboard moves the
/// selection, which stays in sight; a reload leaves the selection and what is on the screen where they are.
class GridView final : public QAbstractScrollArea, public CellHost {
  Q_OBJECT

 public:
  explicit GridView(const GalleryContext& context, QWidget* parent = nullptr);
  ~GridView() override;

  [[nodiscard]] const GridLayout& gridLayout() const { return layout_; }
  /// The shot of each cell.
  [[nodiscard]] const ShotList& shots() const { return shots_.list(); }
  /// Scrolls as little as shows the whole cell.
  void reveal(std::size_t cell);

  // CellHost
  [[nodiscard]] std::size_t cellCount() const override { return shots_.size(); }
  [[nodiscard]] QString cellName(std::size_t cell) const override;
  [[nodiscard]] QRect cellPlace(std::size_t cell) const override;
  [[nodiscard]] std::optional<std::size_t> cellAt(QPoint place) const override;
  [[nodiscard]] bool isCellSelected(std::size_t cell) const override;
  void chooseCell(std::size_t cell) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void addScrollBar();
  void listen();
  void refresh(GalleryShots::Cause cause);
  /// Lays out by the measures of now, and keeps in its place what is at the top of the screen.
  void arrange();
  void placeAt(int position);
  /// Has what is on the screen loaded, and made room for.
  void settle();
  bool askForSnippets();
  void click(std::size_t cell, Qt::KeyboardModifiers modifiers);
  void startDrag(const ShotPtr& shot);

  [[nodiscard]] int position() const { return verticalScrollBar()->value(); }
  /// What is seen of the content.
  [[nodiscard]] QRect screen() const;
  [[nodiscard]] std::optional<std::size_t> cellOf(ShotID id) const;
  [[nodiscard]] std::optional<std::size_t> selectedCell() const;
  void paintCell(const CellPainter& painter, std::size_t cell) const;

  GalleryContext context_;
  VisibleThumbs thumbs_;
  QScrollBar* bar_;
  GridLayout layout_;
  SharedShots shots_;
  std::vector<QString> titles_;                                        ///< of the sections
  std::vector<bool> isAsked_;                                          ///< for each cell, whether its snippet is known
  std::unordered_map<std::size_t, std::vector<SnippetRun>> snippets_;  ///< of cells on the screen
  bool isArranging_ = false;
  std::optional<ShotPtr> pressed_;
  QPoint pressedAt_;
};

}  // namespace Nimbrel
