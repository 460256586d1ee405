#include "Model/Annotation.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Nimbrel {

namespace {

/// In the order of the cases.
constexpr std::array<std::string_view, allAnnotationKinds.size()> kindNames{"redact",    "blur", "box",   "arrow",
                                                                            "highlight", "step", "label", "crop"};

auto tied(const Annotation& mark) {
  // Not the points themselves: QPointF takes neighbours for equal, and a hash cannot.
  return std::tuple(mark.id, mark.kind, mark.start.x(), mark.start.y(), mark.end.x(), mark.end.y(), mark.colorIndex,
                    mark.number, std::string_view(mark.text));
}

}  // namespace

bool Annotation::operator==(const Annotation& other) const { return tied(*this) == tied(other); }

QRectF Annotation::rect() const {
  return {std::min(start.x(), end.x()), std::min(start.y(), end.y()), std::abs(end.x() - start.x()),
          std::abs(end.y() - start.y())};
}

std::size_t qHash(const Annotation& mark, std::size_t seed) {
  const auto text = qHashBits(mark.text.data(), mark.text.size(), seed);
  return qHashMulti(seed, mark.id, static_cast<int>(mark.kind), mark.start.x(), mark.start.y(), mark.end.x(),
                    mark.end.y(), mark.colorIndex, mark.number, text);
}

std::string_view rawValue(Annotation::Kind kind) { return kindNames[static_cast<std::size_t>(kind)]; }

std::optional<Annotation::Kind> annotationKind(std::string_view rawValue) {
  const auto found = std::ranges::find(kindNames, rawValue);
  if (found == kindNames.end()) return std::nullopt;
  return allAnnotationKinds[static_cast<std::size_t>(found - kindNames.begin())];
}

bool liesAtOnePoint(Annotation::Kind kind) { return kind == Annotation::Kind::step || kind == Annotation::Kind::label; }

namespace InkColor {

std::span<const Ink> all() {
  static const std::array inks{
      Ink{"Red", Qt::red, QColor::fromRgbF(0.9F, 0.16F, 0.16F)},
      Ink{"Yellow", Qt::yellow, QColor::fromRgbF(1.0F, 0.8F, 0.1F)},
      Ink{"Blue", Qt::blue, QColor::fromRgbF(0.1F, 0.48F, 0.95F)},
      Ink{"White", Qt::white, QColor::fromRgbF(1, 1, 1)},
      Ink{"Black", Qt::black, QColor::fromRgbF(0, 0, 0)},
  };
  return inks;
}

const Ink& at(int index) {
  const auto last = static_cast<int>(all().size()) - 1;
  return all()[static_cast<std::size_t>(std::clamp(index, 0, last))];
}

}  // namespace InkColor

}  // namespace Nimbrel
