// What a page of text holds for a person to act on, beside the expressions for secrets run over the same page.

#include "Analysis/Detected.h"
#include "Analysis/SecretKinds.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"
#include "Measure.h"

#include <cstdio>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr Timestamp now = timestamp(1'795'255'200);

/// As recognised in the window of a mail program: 1.2 KB.
const std::string page = R"(Inbox (12)   Archive   Sent   Drafts   Trash   Search mail
Planning for the autumn meeting
From: Ann Example <ann@example.com>   To: Bob Sample, team@example.org
Saturday, November 21, 2026 at 10:32 AM
Hello Bob,
thank you for the notes. We should meet before the end of the month, tomorrow at 5 pm or next Monday would suit me.
The room is booked from 14:00 to 15:30, the large one with the screen. The agenda and the figures of last year are at
https://docs.example.com/planning/2026?tab=agenda#second and the slides on www.example.org.
Office: 350 Fifth Avenue, New York, NY 10118
Phone: (650) 253-0000   Mobile: +49 30 901820   Fax: 650-253-0001
Please bring the contract, version 2.4.1 of the draft and your invoice no. 2026-0042 over $1,299.00, which is due
on 12/15/2026. The files report.pdf (3.4 MB), main.cpp and README.md are in the folder of the project.
I have asked the others whether they can come, and most of them said yes; two are on a journey until the weekend, and
one has not answered yet. If the weather is as good as today we could have lunch outside, in the small place by the
river where we were in spring. It seats eight people and they do not mind laptops on the table.
Best wishes, Ann
)";

/// The same page without anything in it.
std::string plainPage() {
  std::string text;
  while (text.size() < page.size())
    text += "The quick brown fox jumps over the lazy dog and runs into the green wood\n";
  return text;
}

std::vector<Comparison> table() {
  std::vector<Pattern> patterns;
  for (const auto& kind : secretKinds) patterns.push_back(*Pattern::compile(kind.expression));
  const auto row = [&](const std::string& name, const std::string& text, double target) {
    return compare(
        name, target, 51, [&] { use(Detected::items(text, now).size()); },
        [&] {
          const auto characters = Text::toUtf16(text);
          for (const auto& pattern : patterns) use(pattern.matches(characters).size());
        });
  };
  return {row("items of a page, beside the expressions for secrets", page, 8),
          row("items of a page without any, beside the same", plainPage(), 2)};
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main() {
  using namespace Nimbrel::Benchmarks;
  std::printf("%zu bytes of text\n", page.size());
  return printTable(table(), "seconds");
}
