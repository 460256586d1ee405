#include "Views/Inspector/DetailsSection.h"

#include "Foundation/Formats.h"
#include "Views/Inspector/ShotDetails.h"
#include "Views/Shared/TextStyles.h"

#include <QPainter>

namespace Nimbrel {

namespace {

constexpr int sourceSpacing = 5;
constexpr int sourceIconSize = 15;
constexpr int fieldGap = 6;  ///< between label and field, beside that of all rows

QString shown(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// An icon that is drawn at the scale of the screen.
class IconView final : public QWidget {
 public:
  IconView() { setFixedSize(scaled(sourceIconSize), scaled(sourceIconSize)); }

  void setIcon(const QIcon& icon) {
    icon_ = icon;
    setVisible(!icon.isNull());
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    icon_.paint(&painter, rect());
  }

 private:
  QIcon icon_;
};

}  // namespace

/// The application that a shot shows.
class DetailsSection::Source final : public QWidget {
 public:
  Source() : icon_(new IconView), title_(new ElidedLabel(TextStyle::Body, Token::Secondary)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(sourceSpacing);
    row->addStretch(1);
    row->addWidget(icon_);
    row->addWidget(title_);
    icon_->hide();
    title_->setObjectName(QStringLiteral("inspector.shows"));
    setToolTip(DetailsSection::tr("Application recognized from visible chrome or reliable capture metadata"));
  }

  void setGroup(const ContentGroup& group, AppIcons& icons) {
    const bool isApplication = group.kind == ContentGroup::Kind::app;
    icon_->setIcon(isApplication ? icons.icon(group.title, group.bundleID) : QIcon());
    title_->setFullText(shown(sourceTitle(group)));
  }

 private:
  IconView* icon_;
  ElidedLabel* title_;
};

DetailsSection::DetailsSection(const InspectorContext& context)
    : ShotSection(context, tr("Details")),
      name_(new NameField),
      source_(new Source),
      recognition_(rowLink({}, QStringLiteral("inspector.recognition"))) {
  setObjectName(QStringLiteral("inspector.details"));
  name_->setObjectName(QStringLiteral("inspector.name"));
  name_->setAccessibleName(tr("Name"));
  addRow(tr("Name"), nameRow(), Fit::Fill);
  taken_ = addValueRow(tr("Taken"));
  addRow(tr("Shows"), source_, Fit::Fill);
  addRow(tr("Recognition"), recognition_, Fit::Keep);
  kind_ = addValueRow(tr("Kind"));
  size_ = addValueRow(tr("Size"));
  place_ = addValueRow(tr("Where"));
  taken_->setObjectName(QStringLiteral("inspector.taken"));
  kind_->setObjectName(QStringLiteral("inspector.kind"));
  size_->setObjectName(QStringLiteral("inspector.size"));
  place_->setObjectName(QStringLiteral("inspector.where"));
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) { drafts().name = text.toStdString(); });
  connect(name_, &QLineEdit::returnPressed, this, &DetailsSection::rename);
  connect(recognition_, &QPushButton::clicked, this, &DetailsSection::editSource);
}

DetailsSection::~DetailsSection() = default;

void DetailsSection::fill(const Shot& shot) {
  setFieldText(*name_, shown(drafts().name));
  taken_->setFullText(shown(Formats::mediumDateShortTime(shot.date)));
  source_->setGroup(store().derived().contentOf(shot.id), icons());
  recognition_->setText(shot.shownName.empty() ? tr("Change…") : tr("Edit Override…"));
  recognition_->setAccessibleName(tr("Recognition") + QStringLiteral(", ") + recognition_->text());
  kind_->setFullText(shown(shot.captureTypeLabel()));
  size_->setFullText(shown(sizeText(shot)));
  place_->setFullText(shown(placeText(shot)));
}

QWidget* DetailsSection::nameRow() {
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(0);
  line->addSpacing(fieldGap);
  line->addWidget(name_, 1);
  return row;
}

void DetailsSection::rename() {
  const auto before = shot();
  const auto name = drafts().name;
  store().rename(*before, name);
  // The file may have got another name than was asked for, such as one with its extension.
  if (shot()->id != before->id || shot()->name == before->name) return;
  drafts().name = shot()->name;
  fill(*shot());
}

void DetailsSection::editSource() {
  closeEditor();
  editor_ = new SourceEditor(shown(shot()->shownName), this);
  connect(editor_, &SourceEditor::saved, this, [this](const QString& name) { setShownName(name.toStdString()); });
  connect(editor_, &SourceEditor::cleared, this, [this] { setShownName({}); });
  editor_->openBelow(*recognition_);
}

void DetailsSection::closeEditor() {
  if (editor_) editor_->close();
}

void DetailsSection::setShownName(const std::string& name) {
  if (!isInCatalogue()) return;
  store().database().setShownName(shot()->id, name);
  store().reload();
}

}  // namespace Nimbrel
