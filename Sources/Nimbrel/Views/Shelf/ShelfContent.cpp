#include "Views/Shelf/ShelfContent.h"

#include "Views/Shared/ShotWords.h"

#include <QCoreApplication>

namespace Nimbrel {

namespace {

QString words(const char* text) { return QCoreApplication::translate("ShelfContent", text); }

}  // namespace

ShelfContent shelfContent(const Store& store, const Shot& shot) {
  const bool isChecking = store.settings().protectSensitive() && !shot.ocrDone;
  ShelfContent content;
  content.isMasked = isChecking || store.isProtected(shot);
  content.title = shownText(shot.name);
  if (content.isMasked) content.title = shot.ocrDone ? words("Sensitive screenshot") : words("Checking screenshot…");
  content.place = shot.filed ? words("Saved in Library") : words("Saved in Inbox");
  content.canReleasePicture = !isChecking;
  content.canCopyText = shot.ocrDone && !shot.ocr.empty();
  content.canFile = !shot.filed;
  return content;
}

}  // namespace Nimbrel
