#include "Views/Editor/EditorState.h"

#include "Support/FakePasteboard.h"
#include "Views/Editor/EditorTool.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Kind = Annotation::Kind;

constexpr QSizeF fitted(1000, 500);

/// The editor without its window.
class EditorGestures : public ::testing::Test {
 protected:
  /// Absent: the tool that copies text.
  void choose(std::optional<Kind> kind) {
    const auto tools = EditorTools::all();
    for (std::size_t row = 0; row < tools.size(); ++row) {
      if (tools[row]->kind() == kind) state_.setTool(static_cast<int>(row));
    }
  }
  void drag(QPointF from, QPointF to) { state_.finishDrag(from, to, fitted); }
  void click(QPointF point) { state_.click(point, fitted); }
  [[nodiscard]] const Annotation& last() const { return state_.items().back(); }
  void showBlocks() {
    state_.setBlocks({{.text = "Dear all", .rect = {0.1, 0.1, 0.3, 0.05}},
                      {.text = "password: hunter2butlonger", .rect = {0.1, 0.2, 0.5, 0.05}},
                      {.text = "write to ada@example.com", .rect = {0.1, 0.3, 0.5, 0.05}}});
  }
  [[nodiscard]] std::vector<QRectF> covered() const {
    std::vector<QRectF> rects;
    for (const auto& item : state_.items()) {
      EXPECT_EQ(item.kind, Kind::redact);
      rects.push_back(item.rect());
    }
    return rects;
  }

  Testing::FakePasteboard pasteboard_;
  EditorState state_{pasteboard_};
};

TEST_F(EditorGestures, BeginWithTheTextToolTheFirstInkAndTheWordNote) {
  EXPECT_EQ(state_.tool(), 0);
  EXPECT_EQ(EditorTools::at(0).kind(), std::nullopt);
  EXPECT_EQ(state_.colorIndex(), 0);
  EXPECT_EQ(state_.labelText(), "Note");
  EXPECT_EQ(state_.note(), "");
  EXPECT_EQ(state_.pixelSize(), QSizeF(1, 1));
  EXPECT_THAT(state_.items(), IsEmpty());
}

TEST_F(EditorGestures, ToolsHaveTheirTitlesInOrder) {
  std::vector<std::string> titles;
  for (const auto* tool : EditorTools::all()) titles.push_back(tool->title().toStdString());
  EXPECT_THAT(titles, ElementsAre("Text", "Black Bar", "Blur", "Box", "Arrow", "Highlight", "Step", "Label", "Crop"));
}

TEST_F(EditorGestures, HintsSayHowAToolIsUsed) {
  std::vector<std::string> hints;
  for (const auto* tool : EditorTools::all()) hints.push_back(tool->hint().toStdString());
  EXPECT_THAT(hints,
              ElementsAre("Click a line to copy it, or drag a box to copy everything inside.",
                          "Drag to place a black bar.", "Drag to place a blur.", "Drag to place a box.",
                          "Drag to place a arrow.", "Drag to place a highlight.", "Click to drop a numbered step.",
                          "Type a label, then click where it should appear.", "Drag around the area to keep."));
}

TEST_F(EditorGestures, EveryKindOfMarkHasItsTool) {
  for (const auto kind : allAnnotationKinds) EXPECT_EQ(EditorTools::of(kind).kind(), kind);
}

TEST_F(EditorGestures, DragsPlaceAMarkInTheChosenInk) {
  state_.setColorIndex(2);
  for (const auto kind : {Kind::redact, Kind::blur, Kind::box, Kind::arrow, Kind::highlight, Kind::crop}) {
    choose(kind);
    drag({900, 400}, {100, 50});
    EXPECT_EQ(last().kind, kind);
    EXPECT_EQ(last().start, QPointF(0.9, 0.8));
    EXPECT_EQ(last().end, QPointF(0.1, 0.1));
    EXPECT_EQ(last().colorIndex, 2);
    EXPECT_EQ(last().number, 0);
    EXPECT_EQ(last().text, "");
  }
  EXPECT_THAT(state_.items(), SizeIs(6));
}

TEST_F(EditorGestures, ADragBeyondThePictureEndsAtItsEdge) {
  choose(Kind::box);
  drag({-50, 20}, {1400, 900});
  EXPECT_EQ(last().start, QPointF(0, 0.04));
  EXPECT_EQ(last().end, QPointF(1, 1));
}

TEST_F(EditorGestures, ASlipPlacesNothingButAnArrow) {
  choose(Kind::box);
  drag({500, 100}, {503, 200});
  drag({500, 100}, {600, 101});
  EXPECT_THAT(state_.items(), IsEmpty());
  drag({500, 100}, {505, 103});
  EXPECT_THAT(state_.items(), SizeIs(1));
  choose(Kind::arrow);
  drag({500, 100}, {503, 100});
  EXPECT_EQ(last().kind, Kind::arrow);
}

TEST_F(EditorGestures, WithoutAFittedPictureNothingIsPlaced) {
  choose(Kind::arrow);
  state_.finishDrag({0, 0}, {10, 10}, {0, 100});
  choose(Kind::step);
  state_.click({0, 0}, {100, 0});
  EXPECT_THAT(state_.items(), IsEmpty());
}

TEST_F(EditorGestures, ASecondCropReplacesTheFirst) {
  choose(Kind::crop);
  drag({0, 0}, {500, 250});
  drag({100, 100}, {600, 350});
  EXPECT_THAT(state_.items(), SizeIs(1));
  EXPECT_EQ(last().start, QPointF(0.1, 0.2));
}

TEST_F(EditorGestures, StepsCountOnFromTheStepsThereAre) {
  choose(Kind::step);
  for (int i = 0; i < 3; ++i) click({100.0 * i, 50});
  EXPECT_EQ(last().number, 3);
  EXPECT_EQ(last().start, QPointF(0.2, 0.1));
  EXPECT_EQ(last().end, last().start);
  state_.undo();
  state_.undo();
  click({700, 50});
  EXPECT_EQ(last().number, 2);
}

TEST_F(EditorGestures, ALabelSaysWhatWasTyped) {
  choose(Kind::label);
  state_.setLabelText("  New time ");
  click({500, 250});
  EXPECT_EQ(last().text, "  New time ");
  EXPECT_EQ(last().start, QPointF(0.5, 0.5));
  state_.setLabelText(" \n\t ");
  click({500, 250});
  EXPECT_THAT(state_.items(), SizeIs(1));
}

TEST_F(EditorGestures, ToolsIgnoreTheGestureThatIsNotTheirs) {
  for (const auto kind : {Kind::step, Kind::label}) {
    choose(kind);
    drag({0, 0}, {500, 500});
  }
  for (const auto kind : {Kind::redact, Kind::blur, Kind::box, Kind::arrow, Kind::highlight, Kind::crop}) {
    choose(kind);
    click({500, 250});
  }
  EXPECT_THAT(state_.items(), IsEmpty());
}

TEST_F(EditorGestures, AClickCopiesTheLineUnderIt) {
  showBlocks();
  click({200, 230});
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  EXPECT_EQ(state_.note(), "");
  click({200, 60});
  EXPECT_EQ(pasteboard_.text, "Dear all");
  EXPECT_EQ(state_.note(), "Copied 8 characters");
}

TEST_F(EditorGestures, ADragCopiesTheLinesThatItTouches) {
  showBlocks();
  drag({390, 110}, {50, 60});
  EXPECT_EQ(pasteboard_.text, "Dear all\npassword: hunter2butlonger");
  EXPECT_EQ(state_.note(), "Copied 35 characters");
}

TEST_F(EditorGestures, ADragOverNoLineSaysSoAndKeepsThePasteboard) {
  showBlocks();
  pasteboard_.writeText("before");
  drag({800, 400}, {900, 450});
  EXPECT_EQ(state_.note(), "No text there");
  EXPECT_EQ(pasteboard_.text, "before");
}

TEST_F(EditorGestures, AHardlyVisibleBoxCopiesNothing) {
  showBlocks();
  drag({200, 60}, {204, 160});
  drag({200, 60}, {300, 62});
  EXPECT_EQ(state_.note(), "");
}

TEST_F(EditorGestures, CharactersAreThoseOfAReader) {
  state_.copy("e\xCC\x81");
  EXPECT_EQ(state_.note(), "Copied 1 characters");
}

TEST_F(EditorGestures, CoveringAllTextTwiceCoversItOnce) {
  showBlocks();
  state_.coverAllText();
  state_.coverAllText();
  EXPECT_THAT(covered(),
              ElementsAre(QRectF(0.1, 0.1, 0.3, 0.05), QRectF(0.1, 0.2, 0.5, 0.05), QRectF(0.1, 0.3, 0.5, 0.05)));
}

TEST_F(EditorGestures, CoveringSecretsLeavesTheOtherLines) {
  showBlocks();
  state_.coverSensitive();
  state_.coverSensitive();
  EXPECT_THAT(covered(), ElementsAre(QRectF(0.1, 0.2, 0.5, 0.05), QRectF(0.1, 0.3, 0.5, 0.05)));
}

TEST_F(EditorGestures, WithoutSecretsNothingIsCovered) {
  state_.setBlocks({{.text = "Dear all", .rect = {0.1, 0.1, 0.3, 0.05}}});
  state_.coverSensitive();
  EXPECT_THAT(state_.items(), IsEmpty());
}

TEST_F(EditorGestures, TheCounterKnowsTheSingular) {
  EXPECT_EQ(markCount(0), "0 marks");
  EXPECT_EQ(markCount(1), "1 mark");
  EXPECT_EQ(markCount(2), "2 marks");
}

}  // namespace
}  // namespace Nimbrel
