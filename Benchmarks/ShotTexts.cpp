#include "ShotTexts.h"

#include <array>
#include <random>
#include <string_view>

namespace Nimbrel::Benchmarks {

namespace {

using Random = std::mt19937;

constexpr std::size_t textBytes = 1200;

/// Words as frequent as words are: a few thousand, the first ones most often.
std::string word(Random& random) {
  static constexpr std::array<const char*, 24> syllables{"ta",  "re", "mo",  "li", "san", "ver", "ko", "pi",
                                                         "den", "ur", "cal", "is", "om",  "fen", "da", "tri",
                                                         "el",  "bo", "qua", "ni", "sta", "ho",  "ge", "wy"};
  const auto rank = random() % (1 + random() % 4000);
  return std::string(syllables.at(rank % 24)) + syllables.at(rank / 24 % 24) +
         (rank > 575 ? syllables.at(rank / 576) : "");
}

std::string amount(Random& random) { return std::to_string(random() % 300) + "." + std::to_string(10 + random() % 90); }

std::string runningWords(Random& random) {
  const auto kind = random() % 40;
  const auto end = kind == 1 ? ": " : kind < 5 ? "\n" : " ";
  return (kind == 0 ? std::to_string(random() % 100000) + "." + std::to_string(random() % 100) : word(random)) + end;
}

std::string receiptLine(Random& random) {
  switch (random() % 12) {
    case 0:
      return "Subtotal $" + amount(random) + "\n";
    case 1:
      return "Total due EUR " + amount(random) + "\n";
    case 2:
      return "VAT 19% €" + amount(random) + "\n";
    case 3:
      return "Invoice no. " + std::to_string(random() % 100000) + " of 12/03/2026\n";
    case 4:
      return "Paid with Visa card ending 4821\n";
    default:
      return std::to_string(1 + random() % 9) + " x " + word(random) + " " + word(random) + "   " + amount(random) +
             "\n";
  }
}

std::string codeLine(Random& random) {
  switch (random() % 4) {
    case 0:
      return "const " + word(random) + " = " + word(random) + "(" + word(random) + ");\n";
    case 1:
      return "  if (" + word(random) + " => " + word(random) + ") {\n";
    case 2:
      return "import " + word(random) + "." + word(random) + "\n";
    default:
      return "    return " + word(random) + "-" + word(random) + " + " + std::to_string(random() % 10) + ";\n  }\n";
  }
}

std::string chatLine(Random& random) {
  return std::to_string(random() % 24) + ":" + std::to_string(10 + random() % 50) + " " + word(random) + " – “" +
         word(random) + " " + word(random) + " " + word(random) + (random() % 4 == 0 ? "” 🙂 Delivered\n" : "”\n") +
         (random() % 8 == 0 ? "Send a message\n" : "");
}

std::string pageLine(Random& random) {
  switch (random() % 8) {
    case 0:
      return "Sign in • Privacy • Terms\n";
    case 1:
      return "https://" + word(random) + ".example.com/" + word(random) + "-" + std::to_string(random() % 100) + "\n";
    case 2:
      return "Add to bag   Delivery " + word(random) + "   £" + amount(random) + "\n";
    default:
      return word(random) + " " + word(random) + " " + word(random) + " " + word(random) + " " + word(random) + "\n";
  }
}

std::string reportLine(Random& random) {
  switch (random() % 5) {
    case 0:
      return "WEB-" + std::to_string(random() % 5000) + " Status: offen, Priorität hoch\n";
    case 1:
      return "2026-03-" + std::to_string(10 + random() % 20) + "T10:15:42 error: " + word(random) + " failed\n";
    default:
      return word(random) + "-" + word(random) + " für " + word(random) + " " + word(random) + "\n";
  }
}

}  // namespace

std::string shotText(int number) {
  using Part = std::string (*)(Random&);
  static constexpr std::array<Part, 10> kinds{runningWords, receiptLine, runningWords, codeLine,   runningWords,
                                              chatLine,     pageLine,    runningWords, reportLine, runningWords};
  Random random(static_cast<unsigned>(number));
  const auto part = kinds.at(static_cast<std::size_t>(number) % kinds.size());
  std::string text;
  while (text.size() < textBytes) text += part(random);
  return text;
}

Application applicationOf(int number) {
  static const std::array<Application, 6> applications{{{"Terminal", "org.gnome.Terminal"},
                                                        {"Firefox", "org.mozilla.firefox"},
                                                        {"Preview", ""},
                                                        {"LibreOffice Writer", "org.libreoffice.writer"},
                                                        {"", ""},
                                                        {"", ""}}};
  return applications.at(static_cast<std::size_t>(number / 3) % applications.size());
}

}  // namespace Nimbrel::Benchmarks
