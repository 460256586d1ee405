#include "Samples/Controls.h"
#include "Samples/Pictures/Editor.h"
#include "Samples/Pictures/Pictures.h"

#include <array>

namespace Nimbrel::Samples {

namespace {

constexpr std::array<QStringView, 9> files{u"#WEATHERVANE",      u"station",        u"  harvest.py",
                                           u"  sensors.py",      u"  store.py",     u"tests",
                                           u"  test_harvest.py", u"pyproject.toml", u"README.md"};

constexpr std::array<QStringView, 2> tabTitles{u"harvest.py", u"sensors.py"};

constexpr std::array<QStringView, 17> keywords{u"import", u"from", u"class", u"def",   u"return",  u"for",
                                               u"in",     u"if",   u"not",   u"raise", u"with",    u"as",
                                               u"except", u"try",  u"self",  u"None",  u"continue"};

constexpr std::array<QStringView, 24> code{u"import csv",
                                           u"from datetime import timedelta",
                                           u"",
                                           u"from station.sensors import Reading, SensorError",
                                           u"",
                                           u"# A gap of more than ten minutes starts a new series.",
                                           u"LONGEST_GAP = timedelta(minutes=10)",
                                           u"",
                                           u"",
                                           u"class Harvest:",
                                           u"    def __init__(self, store):",
                                           u"        self.store = store",
                                           u"        self.skipped = 0",
                                           u"",
                                           u"    def collect(self, path):",
                                           u"        with open(path, newline='') as source:",
                                           u"            for row in csv.DictReader(source):",
                                           u"                try:",
                                           u"                    reading = Reading.parse(row)",
                                           u"                except SensorError as error:",
                                           u"                    self.skipped += 1",
                                           u"                    continue",
                                           u"                self.store.append(reading)",
                                           u"        return self.skipped"};

}  // namespace

void drawDarkEditor(Canvas& canvas, const Occasion& /*occasion*/) {
  const auto& theme = darkTheme();
  const auto page = window(canvas, canvas.bounds(), u"harvest.py (weathervane) - Fernscript", theme);
  drawEditor(canvas, page,
             {.files = files,
              .chosenFile = 2,
              .tabTitles = tabTitles,
              .firstNumber = 1,
              .lines = code,
              .language = {.keywords = keywords, .comment = u"#"},
              .languageName = u"Python",
              .caretLine = 20,
              .caretColumn = 37},
             darkCode(), theme);
}

}  // namespace Nimbrel::Samples
