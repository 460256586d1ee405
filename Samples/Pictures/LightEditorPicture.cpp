#include "Samples/Controls.h"
#include "Samples/Pictures/Editor.h"
#include "Samples/Pictures/Pictures.h"

#include <array>
#include <vector>

namespace Nimbrel::Samples {

namespace {

constexpr std::array<QStringView, 13> files{
    u"#TIDEPOOL",    u"src",        u"  ledger.ts", u"  invoice.ts",     u"  currency.ts",
    u"  report.ts",  u"  index.ts", u"tests",       u"  ledger.test.ts", u"  report.test.ts",
    u"package.json", u"README.md",  u"CHANGELOG.md"};

constexpr std::array<QStringView, 3> tabTitles{u"ledger.ts", u"report.ts", u"ledger.test.ts"};

constexpr std::array<QStringView, 15> keywords{u"import", u"from", u"export",  u"class",    u"const",
                                               u"let",    u"for",  u"of",      u"return",   u"if",
                                               u"throw",  u"new",  u"private", u"readonly", u"interface"};

constexpr std::array<QStringView, 37> code{
    u"import { Currency, round } from './currency';",
    u"import { Invoice } from './invoice';",
    u"",
    u"// One line of the book: amounts are whole cents, never fractions.",
    u"export interface Entry {",
    u"  readonly date: Date;",
    u"  readonly account: string;",
    u"  readonly cents: number;",
    u"}",
    u"",
    u"export class Ledger {",
    u"  private readonly entries: Entry[] = [];",
    u"",
    u"  record(invoice: Invoice, currency: Currency) {",
    u"    if (invoice.lines.length === 0) {",
    u"      throw new RangeError('Invoice ' + invoice.number + ' has no lines');",
    u"    }",
    u"    for (const line of invoice.lines) {",
    u"      const cents = round(line.amount * currency.rate, 2);",
    u"      this.entries.push({ date: invoice.issued, account: line.account, cents });",
    u"    }",
    u"  }",
    u"",
    u"  balance(account: string, until: Date): number {",
    u"    let total = 0;",
    u"    for (const entry of this.entries) {",
    u"      if (entry.account === account && entry.date <= until) total += entry.cents;",
    u"    }",
    u"    return total;",
    u"  }",
    u"",
    u"  overdue(now: Date, graceDays = 14): Entry[] {",
    u"    const limit = now.getTime() - graceDays * 86_400_000;",
    u"    return this.entries.filter((entry) => entry.cents > 0 && entry.date.getTime() < limit);",
    u"  }",
    u"}",
    u""};

constexpr QStringView addedLine = u"    if (graceDays < 0) throw new RangeError('graceDays');";
constexpr int addedAt = 32;

}  // namespace

void drawLightEditor(Canvas& canvas, const Occasion& occasion) {
  const auto& theme = lightTheme();
  const auto screen = desktop(canvas, u"Fernscript", occasion.taken);
  const auto page = window(canvas, screen, u"ledger.ts (tidepool) - Fernscript", theme);
  std::vector<QStringView> lines(code.begin(), code.end());
  Editor editor{.files = files,
                .chosenFile = 2,
                .tabTitles = tabTitles,
                .firstNumber = 1,
                .lines = {},
                .language = {.keywords = keywords, .comment = u"//"},
                .languageName = u"TypeScript",
                .caretLine = 18,
                .caretColumn = 26};
  if (occasion.variant == 1) {
    editor.caretLine = 24;
    editor.caretColumn = 18;
  }
  if (occasion.variant == 2) {
    lines.insert(lines.begin() + addedAt, addedLine);
    editor.caretLine = addedAt;
    editor.caretColumn = static_cast<int>(addedLine.size());
  }
  editor.lines = lines;
  drawEditor(canvas, page, editor, lightCode(), theme);
}

}  // namespace Nimbrel::Samples
