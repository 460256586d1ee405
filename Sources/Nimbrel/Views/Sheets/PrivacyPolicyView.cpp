#include "Views/Sheets/PrivacyPolicyView.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Sheets/WrappedText.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>

#include <array>

namespace Nimbrel {

namespace {

constexpr QSize wholeSize(620, 600);
constexpr int padding = Measures::step24;
constexpr int betweenSections = 18;
constexpr int underHeading = 5;

struct Section {
  const char* heading;
  const char* body;
};

constexpr std::array sections{
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "Your screenshots stay on your Mac"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "Nimbrel reads the screenshot folders you choose and stores its catalogue locally. "
                              "Screenshot previews, recognized text, notes, tags, and search data are not uploaded to "
                              "Nimbrel.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "On-device recognition"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "Text recognition, sensitive-text detection, application recognition, duplicate checks, "
                              "and search indexing run on your Mac using local system frameworks.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "Optional encrypted sync"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "If you configure encrypted folder sync, Nimbrel writes encrypted copies to the folder "
                              "you select. That folder may be managed by a provider such as iCloud or Dropbox. Nimbrel "
                              "never stores your passphrase.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "Software updates"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "When update checks are enabled, Nimbrel requests an update feed over HTTPS. The web "
                              "host receives ordinary connection data such as an IP address. Nimbrel does not enable "
                              "hardware-profile reporting.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "No advertising or analytics"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "Nimbrel contains no advertising SDK and does not send product analytics or screenshot "
                              "telemetry.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "Control and deletion"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "You control the original screenshot files. Removing Nimbrel does not delete them. You "
                              "can remove catalogue entries or move selected screenshots to Trash from inside the "
                              "app.")},
    Section{QT_TRANSLATE_NOOP("PrivacyPolicyView", "Contact"),
            QT_TRANSLATE_NOOP("PrivacyPolicyView",
                              "A support and privacy email will be published with the Nimbrel website before public "
                              "release.")}};

WrappedText* makeText(const QString& words, TextStyle style, Token token) {
  auto* text = new WrappedText(words, style, token);
  // On the ground of a text field it would take that one's colour.
  text->setForegroundRole(QPalette::WindowText);
  text->setFixedWidth(wholeSize.width() - 2 * padding);
  return text;
}

}  // namespace

PrivacyPolicyView::PrivacyPolicyView(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("privacyPolicy"));
  setWindowTitle(tr("Nimbrel Privacy Policy"));
  setWindowModality(Qt::WindowModal);
  setFixedSize(wholeSize);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeHeader());
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(makeScroller(), 1);
}

QWidget* PrivacyPolicyView::makeHeader() {
  auto* header = new QWidget;
  auto* row = new QHBoxLayout(header);
  row->setContentsMargins(Measures::dialogMargin, Measures::dialogMargin, Measures::dialogMargin,
                          Measures::dialogMargin);
  auto* title = new QLabel(tr("Nimbrel Privacy Policy"));
  setTextLook(*title, TextStyle::Title2);
  auto bold = title->font();
  bold.setWeight(QFont::Bold);
  title->setFont(bold);
  auto* done = new QPushButton(tr("Done"));
  done->setObjectName(QStringLiteral("privacyPolicy.done"));
  setVariant(*done, ButtonVariant::Default);
  connect(done, &QPushButton::clicked, this, &QDialog::accept);
  row->addWidget(title);
  row->addStretch();
  row->addWidget(done);
  return header;
}

QWidget* PrivacyPolicyView::makeScroller() {
  auto* scroller = new QScrollArea;
  scroller->setObjectName(QStringLiteral("privacyPolicy.scroller"));
  scroller->setAccessibleName(windowTitle());
  scroller->setFrameShape(QFrame::NoFrame);
  scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Under the scroll bar as well.
  scroller->setBackgroundRole(QPalette::Base);
  scroller->setAutoFillBackground(true);
  scroller->setWidgetResizable(true);
  auto* page = new QWidget;
  page->setBackgroundRole(QPalette::Base);
  auto* column = new QVBoxLayout(page);
  // The scroll bar stands in the padding.
  column->setContentsMargins(padding, padding, padding - style()->pixelMetric(QStyle::PM_ScrollBarExtent), padding);
  column->setSpacing(betweenSections);
  addSections(*column);
  column->addStretch();
  scroller->setWidget(page);
  return scroller;
}

void PrivacyPolicyView::addSections(QVBoxLayout& column) {
  for (const auto& section : sections) {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(underHeading);
    texts->addWidget(makeText(tr(section.heading), TextStyle::Headline, Token::Text));
    texts->addWidget(makeText(tr(section.body), TextStyle::Body, Token::Secondary));
    column.addLayout(texts);
  }
  column.addWidget(makeText(tr("Effective: September 23, 2026"), TextStyle::Caption, Token::Tertiary));
}

}  // namespace Nimbrel
