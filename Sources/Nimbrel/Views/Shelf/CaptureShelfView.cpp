#include "Views/Shelf/CaptureShelfView.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/GlyphButton.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shelf/ShelfContent.h"
#include "Views/Shelf/ShelfThumb.h"
#include "Views/Shelf/TwoLineLabel.h"

#include <QVBoxLayout>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int padding = Measures::step12;  ///< 13 with the outline of the panel
constexpr int rowGap = Measures::step12;

/// Whatever is said in it, so that the shelf keeps its size while it is up.
int infoHeight() {
  return std::max(ShelfThumb::boxSize.height(),
                  TwoLineLabel::mostHeight() + Measures::step2 + lineHeight(TextStyle::Body));
}

}  // namespace

CaptureShelfView::CaptureShelfView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QWidget(parent), store_(store), actions_(store), content_(new QWidget(this)) {
  setObjectName(QStringLiteral("shelf.view"));
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(padding, padding, padding, padding);
  outer->addWidget(content_);
  // What is empty keeps its room.
  auto policy = content_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  content_->setSizePolicy(policy);
  auto* column = new QVBoxLayout(content_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(rowGap);
  column->addLayout(makeHeader());
  column->addLayout(makeInfo(thumbs, previews));
  auto* rows = new QVBoxLayout;
  rows->setSpacing(Measures::step6);
  auto* upper = makeButtonRow();
  auto* lower = makeButtonRow();
  rows->addLayout(upper);
  rows->addLayout(lower);
  column->addLayout(rows);
  addButtons(*upper, *lower);

  connect(&store, &Store::shotsChanged, this, &CaptureShelfView::refresh);
  connect(&store, &Store::unlockedSensitiveIDsChanged, this, &CaptureShelfView::refresh);
  connect(&store.settings(), &Settings::changed, this, [this](const QString& key) {
    if (key == store_.settings().protectSensitive.key()) refresh();
  });
  connect(&actions_, &GalleryActions::shareRequested, this, &CaptureShelfView::shareRequested);
  refresh();
}

QHBoxLayout* CaptureShelfView::makeHeader() {
  auto* row = new QHBoxLayout;
  row->setSpacing(Measures::step6);
  row->addWidget(new SymbolView(QStringLiteral("camera.viewfinder"), scaled(Measures::textSymbol), Token::Accent));
  auto* heading = new ElidedLabel(TextStyle::Headline);
  heading->setObjectName(QStringLiteral("shelf.heading"));
  heading->setFullText(tr("New Screenshot"));
  row->addWidget(heading, 1);
  auto* dismiss = new GlyphButton(QStringLiteral("xmark.circle.fill"), tr("Dismiss capture actions"));
  dismiss->setObjectName(QStringLiteral("shelf.dismiss"));
  dismiss->setFixedSize(scaled(Measures::sidebarSymbol), scaled(Measures::sidebarSymbol));
  connect(dismiss, &QAbstractButton::clicked, this, &CaptureShelfView::dismissRequested);
  row->addWidget(dismiss);
  return row;
}

QHBoxLayout* CaptureShelfView::makeInfo(ThumbCache& thumbs, GalleryPreviewCache& previews) {
  auto* row = new QHBoxLayout;
  row->setSpacing(Measures::step12);
  thumb_ = new ShelfThumb(thumbs, previews);
  row->addWidget(thumb_, 0, Qt::AlignVCenter);
  title_ = new TwoLineLabel;
  title_->setObjectName(QStringLiteral("shelf.title"));
  place_ = new ElidedLabel(TextStyle::Body, Token::Secondary);
  place_->setObjectName(QStringLiteral("shelf.place"));
  auto* lines = new QVBoxLayout;
  lines->setSpacing(Measures::step2);
  lines->addStretch();
  lines->addWidget(title_);
  lines->addWidget(place_);
  lines->addStretch();
  row->addLayout(lines, 1);
  row->addStrut(infoHeight());
  return row;
}

QHBoxLayout* CaptureShelfView::makeButtonRow() {
  auto* row = new QHBoxLayout;
  row->setSpacing(Measures::step6);
  return row;
}

QPushButton* CaptureShelfView::addButton(QHBoxLayout& row, const QString& symbol, const QString& title,
                                         const QString& name, const Action& action) {
  auto* button = new QPushButton(Symbols::icon(symbol, {.normal = Token::Text}), title);
  button->setObjectName(name);
  setButtonSize(*button, ButtonSize::Small);
  button->setFont(textFont(TextStyle::Caption));
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  connect(button, &QPushButton::clicked, this, [this, action] {
    if (const auto shot = current()) action(*shot);
  });
  row.addWidget(button, 1);
  return button;
}

void CaptureShelfView::addButtons(QHBoxLayout& upper, QHBoxLayout& lower) {
  copyImage_ = addButton(upper, QStringLiteral("photo.on.rectangle"), tr("Copy Image"),
                         QStringLiteral("shelf.copyImage"), [this](const auto& shot) { actions_.copyImage(shot); });
  copyText_ = addButton(upper, QStringLiteral("text.viewfinder"), tr("Copy Text"), QStringLiteral("shelf.copyText"),
                        [this](const auto& shot) { actions_.copyText(shot); });
  edit_ = addButton(upper, QStringLiteral("pencil.tip.crop.circle"), tr("Edit"), QStringLiteral("shelf.edit"),
                    [this](const auto& shot) { store_.requestEdit(shot); });
  file_ = addButton(lower, QStringLiteral("tray.and.arrow.down"), tr("File"), QStringLiteral("shelf.file"),
                    [this](const auto& shot) { store_.file({shot}); });
  share_ = addButton(lower, QStringLiteral("square.and.arrow.up"), tr("Share"), QStringLiteral("shelf.share"),
                     [this](const auto& shot) { actions_.share(shot); });
}

void CaptureShelfView::setShot(const ShotPtr& shot) {
  shot_ = shot;
  refresh();
}

std::optional<ShotPtr> CaptureShelfView::current() const {
  if (!shot_) return std::nullopt;
  // An id may come again after its row is gone.
  const auto found = std::ranges::find_if(
      store_.shots(), [this](const ShotPtr& row) { return row->id == shot_->id && row->added == shot_->added; });
  return found == store_.shots().end() ? std::nullopt : std::optional(*found);
}

void CaptureShelfView::refresh() {
  const auto shot = current();
  content_->setVisible(shot.has_value());
  if (!shot) return;
  const auto content = shelfContent(store_, **shot);
  thumb_->setShot(**shot, content.isMasked);
  title_->setFullText(content.title);
  place_->setFullText(content.place);
  copyImage_->setEnabled(content.canReleasePicture);
  copyText_->setEnabled(content.canCopyText);
  edit_->setEnabled(content.canReleasePicture);
  file_->setEnabled(content.canFile);
  share_->setEnabled(content.canReleasePicture);
}

}  // namespace Nimbrel
