#include "Views/Sheets/UpdateView.h"

#include "Views/Inspector/BoxedText.h"
#include "Views/Shared/Measures.h"
#include "Views/Sheets/WrappedText.h"

#include <QTextDocumentFragment>

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 560;
constexpr int contentWidth = sheetWidth - 2 * Measures::dialogMargin;
constexpr int notesHeight = 220;
/// More than anybody reads of a release.
constexpr std::size_t mostNotes = 20'000;

/// Only the text: what HTML refers to is neither fetched nor looked for.
QString textOf(const std::string& notes) {
  return QTextDocumentFragment::fromHtml(QString::fromStdString(notes.substr(0, mostNotes))).toPlainText().trimmed();
}

}  // namespace

UpdateView::UpdateView(const Release& release, QWidget* parent)
    : SheetDialog(tr("Nimbrel %1 Is Available").arg(QString::fromStdString(release.version)), parent) {
  setObjectName(QStringLiteral("updateSheet"));
  setAttribute(Qt::WA_DeleteOnClose);
  content()->setSpacing(Measures::step12);
  addWords(release);
  addNotes(release.notes);
  addButtons();
}

void UpdateView::addWords(const Release& release) {
  const auto words =
      tr("You have %1. The download has been checked and is what its makers have signed. Nimbrel saves "
         "it for you and installs nothing by itself.");
  auto* label = new WrappedText(words.arg(QString::fromStdString(release.running)), TextStyle::Body, Token::Secondary);
  label->setObjectName(QStringLiteral("update.words"));
  label->setFixedWidth(contentWidth);
  content()->addWidget(label);
}

void UpdateView::addNotes(const std::string& notes) {
  const auto text = textOf(notes);
  if (text.isEmpty()) return;
  auto* box = new BoxedText({.style = TextStyle::Body,
                             .linePitch = lineHeight(TextStyle::Body),
                             .padding = Measures::step8,
                             .radius = Measures::groupRadius,
                             .outline = Token::Separator});
  box->setObjectName(QStringLiteral("update.notes"));
  box->setAccessibleName(tr("What Is New"));
  box->setReadOnly(true);
  box->setPlainText(text);
  box->setFixedSize(contentWidth, scaled(notesHeight));
  content()->addWidget(box);
}

void UpdateView::addButtons() {
  addCancelButton(tr("Later"))->setObjectName(QStringLiteral("update.later"));
  auto* skip = addFurtherButton(tr("Skip This Version"));
  skip->setObjectName(QStringLiteral("update.skip"));
  connect(skip, &QPushButton::clicked, this, [this] {
    Q_EMIT skipRequested();
    accept();
  });
  auto* save = addDefaultButton(tr("Save Download"));
  save->setObjectName(QStringLiteral("update.save"));
  connect(save, &QPushButton::clicked, this, [this] {
    Q_EMIT saveRequested();
    accept();
  });
}

}  // namespace Nimbrel
