#include "Views/Recording/Figure.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace Nimbrel {

namespace {

QAccessibleInterface* figureInterface(const QString& /*className*/, QObject* object) {
  auto* figure = qobject_cast<Figure*>(object);
  return figure != nullptr ? new QAccessibleWidget(figure, QAccessible::Graphic) : nullptr;
}

}  // namespace

Figure::Figure(QWidget* parent) : QWidget(parent) {
  // Installed once, however often that is asked for.
  QAccessible::installFactory(figureInterface);
}

}  // namespace Nimbrel
