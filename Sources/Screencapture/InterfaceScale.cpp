#include "Screencapture/InterfaceScale.h"

#include <QList>

#include <algorithm>

namespace Nimbrel::Screencapture {

namespace {

constexpr double usualResolution = 96;
constexpr double largestScale = 4;

/// A number above zero, or nothing as 0.
double positive(const QByteArray& text) {
  bool isNumber = false;
  const double number = text.trimmed().toDouble(&isNumber);
  return isNumber && number > 0 ? number : 0;
}

double screenFactor(const QByteArray& factors, std::string_view name, int index) {
  const auto entries = factors.split(';');
  for (int i = 0; i < entries.size(); ++i) {
    const auto sign = entries[i].lastIndexOf('=');
    const bool isMeant = sign < 0 ? i == index : std::string_view(entries[i].data(), std::size_t(sign)) == name;
    if (isMeant) return positive(entries[i].mid(sign + 1));
  }
  return 0;
}

double orElse(double number, double otherwise) { return number > 0 ? number : otherwise; }

}  // namespace

double interfaceScale(const ScaleWishes& wishes, std::string_view monitorName, int monitorIndex) {
  const double byType = orElse(wishes.dotsPerInch, usualResolution) / usualResolution;
  const double ofScreen = orElse(screenFactor(wishes.screenFactors, monitorName, monitorIndex), byType);
  return std::clamp(ofScreen * orElse(positive(wishes.factor), 1), 1.0, largestScale);
}

double typeResolution(std::string_view resources) {
  for (const auto& line : QByteArray::fromRawData(resources.data(), qsizetype(resources.size())).split('\n')) {
    const auto colon = line.indexOf(':');
    if (colon > 0 && line.first(colon).trimmed() == "Xft.dpi") return positive(line.mid(colon + 1));
  }
  return 0;
}

}  // namespace Nimbrel::Screencapture
