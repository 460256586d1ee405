#include "Foundation/Text.h"
#include "Views/Editor/EditorState.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Theme.h"

namespace Nimbrel::EditorTools {

namespace {

constexpr double shadowOpacity = 0.35;
constexpr QPointF shadowOffset(0, 1);

class LabelTool final : public EditorTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::label; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Label"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("textformat"); }
  [[nodiscard]] QString hint() const override {
    return QStringLiteral("Type a label, then click where it should appear.");
  }

  void click(EditorState& state, QPointF point) const override {
    if (Text::trimmedWithLineBreaks(state.labelText()).empty()) return;
    state.place(Annotation::Kind::label, point, point, 0, state.labelText());
  }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    const auto place = MarkShapes::label(mark.text, canvas.point(mark.start));
    constexpr auto flags = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignTop | Qt::TextDontClip | Qt::TextSingleLine;
    const auto text = shownText(mark.text);
    auto shadow = themeColor(Token::InkBlack);
    shadow.setAlphaF(static_cast<float>(shadowOpacity));
    painter.setFont(MarkShapes::font());
    painter.setPen(shadow);
    painter.drawText(place.translated(shadowOffset), flags, text);
    painter.setPen(MarkShapes::ink(mark.colorIndex));
    painter.drawText(place, flags, text);
  }
};

}  // namespace

const EditorTool& label() {
  static const LabelTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
