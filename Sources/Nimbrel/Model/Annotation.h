#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QUuid>

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Nimbrel {

/// One mark that the user placed on a screenshot. Marks live in memory only, as values.
struct Annotation {
  /// What the mark does to the picture.
  enum class Kind {
    redact,     ///< covers its rectangle with black
    blur,       ///< blurs what lies in its rectangle
    box,        ///< outlines its rectangle
    arrow,      ///< points from `start` to `end`
    highlight,  ///< tints its rectangle
    step,       ///< sets a number on a disc around `start`
    label,      ///< sets a text whose top left is `start`
    crop        ///< keeps its rectangle of the picture alone
  };

  QUuid id = QUuid::createUuid();  ///< of its own for each mark; a copy keeps it
  Kind kind = Kind::redact;
  QPointF start;  ///< first corner, or the anchor of a step or label: 0 to 1 of the picture, origin at its top left
  QPointF end;    ///< second corner, or the tip of an arrow
  int colorIndex = 0;  ///< row of InkColor::all
  int number = 0;      ///< what a step shows
  std::string text;    ///< what a label shows

  /// Over all fields, to the last bit of a coordinate.
  bool operator==(const Annotation& other) const;

  /// The smallest rectangle that holds both points, 0 to 1.
  [[nodiscard]] QRectF rect() const;
};

/// Equal marks have equal hashes.
[[nodiscard]] std::size_t qHash(const Annotation& mark, std::size_t seed = 0);

/// All kinds, in their order.
inline constexpr std::array allAnnotationKinds{
    Annotation::Kind::redact,    Annotation::Kind::blur, Annotation::Kind::box,   Annotation::Kind::arrow,
    Annotation::Kind::highlight, Annotation::Kind::step, Annotation::Kind::label, Annotation::Kind::crop};

/// The name of the kind in files: that of its case. It is there as long as the program runs.
[[nodiscard]] std::string_view rawValue(Annotation::Kind kind);

/// The kind whose raw value this is, to the letter; absent when there is none.
[[nodiscard]] std::optional<Annotation::Kind> annotationKind(std::string_view rawValue);

/// Whether marks of this kind lie at `start` alone, whatever their `end`: steps and labels.
[[nodiscard]] bool liesAtOnePoint(Annotation::Kind kind);

/// The inks for marks.
namespace InkColor {

/// A colour to draw marks in.
struct Ink {
  std::string_view name;  ///< as the user reads it
  QColor interfaceColor;  ///< in the window
  QColor renderingColor;  ///< in the picture, whatever the device
};

/// "Red", "Yellow", "Blue", "White", "Black".
[[nodiscard]] std::span<const Ink> all();

/// The row, or the nearest one there is.
[[nodiscard]] const Ink& at(int index);

}  // namespace InkColor

}  // namespace Nimbrel
