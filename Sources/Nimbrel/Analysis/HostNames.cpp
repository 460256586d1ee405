#include "Analysis/HostNames.h"

#include "Foundation/Text.h"

#include <unicode/locid.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

namespace Nimbrel::HostNames {

namespace {

using Names = std::set<std::string_view>;

/// Domains that hardly anything but a host ends in. Those of countries come beside them.
const Names plainDomains{"com", "edu", "eu", "gov", "mil", "net", "org", "uk"};

/// Domains that hosts and members in code end in alike: hosts when in lower case and with nothing of code in front.
const Names youngDomains{"agency", "ai",    "app",    "art",    "berlin", "biz",   "blog",   "cloud",   "club",
                         "co",     "codes", "coffee", "dev",    "email",  "games", "gmbh",   "hamburg", "io",
                         "koeln",  "ly",    "me",     "media",  "money",  "news",  "ngo",    "ninja",   "online",
                         "page",   "shop",  "site",   "social", "space",  "store", "studio", "tech",    "travel",
                         "tv",     "wien",  "wiki",   "world",  "xyz"};

/// Domains that are words of English, German or of programs.
const Names wordDomains{"am",  "an",   "as",   "do", "gg", "host", "id",  "in",   "info", "is",
                        "la",  "link", "live", "mu", "my", "name", "one", "plus", "pro",  "re",
                        "run", "so",   "st",   "to", "us", "vi",   "ws",  "zone"};

/// Domains that are also file extensions.
const Names fileDomains{"ac", "ad", "bz", "cc", "cd",  "cr", "cs",  "gz", "hm", "hn", "lk",
                        "ma", "md", "mk", "ml", "mm",  "mo", "mov", "ms", "pl", "pm", "ps",
                        "py", "rs", "sc", "sh", "sql", "sv", "tc",  "tf", "vc", "zip"};

/// What a dotted name in code begins with.
const Names receivers{"app",   "args",    "array",    "class",  "cls",     "config", "console",  "context", "ctx",
                      "data",  "doc",     "document", "e",      "el",      "event",  "fs",       "item",    "java",
                      "javax", "kotlin",  "log",      "logger", "math",    "module", "node",     "obj",     "object",
                      "os",    "process", "props",    "req",    "request", "res",    "response", "self",    "settings",
                      "state", "std",     "string",   "sys",    "system",  "this",   "user",     "window"};

/// A name of three labels or more that begins with one of these is that of a package, which puts its domain first.
const Names packageRoots{"com", "edu", "gov", "io", "net", "org"};

const Names fileEndings{"avif", "bmp", "csv", "doc",  "docx", "gif",  "heic", "ico", "jpeg", "jpg", "json", "pdf",
                        "png",  "psd", "svg", "tiff", "txt",  "webm", "webp", "xls", "xlsx", "xml", "mp4",  "log"};

bool isCountry(std::string_view domain) {
  static const auto countries = [] {
    std::vector<std::string> codes;
    for (const char* const* code = icu::Locale::getISOCountries(); *code != nullptr; ++code) {
      codes.push_back(Text::asciiLowered(*code));
    }
    std::ranges::sort(codes);
    return codes;
  }();
  return std::ranges::binary_search(countries, domain);
}

bool hasLetter(std::string_view label) {
  return std::ranges::any_of(label, [](unsigned char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }) ||
         std::ranges::any_of(label, [](unsigned char c) { return c >= 0x80; });
}

bool isLowerCase(std::string_view host) { return host == Text::asciiLowered(host); }

/// Whether the name is written as names of hosts are: "Example.com", also "EXAMPLE.COM", but not "Sentence.It".
bool isCasedLikeAHost(std::string_view host, std::string_view written, std::string_view domain) {
  if (isLowerCase(written)) return true;
  const bool hasLower = std::ranges::any_of(host, [](char c) { return c >= 'a' && c <= 'z'; });
  return !hasLower && (domain == "com" || domain == "org");
}

bool looksLikeCode(const std::vector<std::string>& labels) {
  return receivers.contains(labels.front()) || (labels.size() > 2 && packageRoots.contains(labels.front()));
}

/// Whether the label in front of the domain can be a name: numbers, initials and abbreviations are none.
bool isNamed(std::string_view label, bool hasPath) {
  if (!hasLetter(label)) return label.size() >= 3;
  return label.size() >= 2 || hasPath;
}

}  // namespace

bool isBareHost(std::u16string_view host, std::u16string_view path, std::u16string_view country) {
  const auto written = Text::toUtf8(host);
  const auto labels = Text::split(Text::lowered(written), '.', Text::EmptyPieces::Keep);
  if (labels.size() < 2 || host.size() > 253) return false;
  const auto& domain = labels.back();
  const bool hasPath = path.size() > 1 && path.front() == u'/' && path[1] != u'/';
  const auto writtenDomain = std::string_view(written).substr(written.size() - std::min(written.size(), domain.size()));
  if (!isNamed(labels[labels.size() - 2], hasPath || domain == "com")) return false;
  if (!isCasedLikeAHost(written, writtenDomain, domain) || (looksLikeCode(labels) && !hasPath)) return false;

  if (plainDomains.contains(domain) || Text::toUtf16(domain) == country) return true;
  if (youngDomains.contains(domain)) return isLowerCase(written);
  if (fileDomains.contains(domain)) return false;
  if (wordDomains.contains(domain)) return isLowerCase(written) && hasPath;
  return isCountry(domain);
}

bool endsLikeAFile(std::u16string_view name) {
  const auto ending = Text::asciiLowered(Text::toUtf8(name.substr(name.rfind(u'.') + 1)));
  return fileEndings.contains(ending);
}

}  // namespace Nimbrel::HostNames
