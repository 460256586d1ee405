// nimbrel-reader: reads text and codes off the pictures that Nimbrel names on standard input, so that a picture which a
// library cannot bear takes this process with it and no more.

#include "Reader/Desk.h"
#include "Reader/Languages.h"
#include "Reader/Protocol.h"
#include "Reader/Restraint.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace {

/// Standard output for the answers alone: what a library prints goes where its complaints go.
std::FILE* takeStandardOutput() {
  const int own = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  if (own < 0) return nullptr;
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  return ::fdopen(own, "w");
}

bool say(std::FILE* output, std::string line) {
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), output) == line.size() && std::fflush(output) == 0;
}

/// One a line, for whoever wants to know what can be read.
int listLanguages(std::FILE* output) {
  for (const auto& model : Nimbrel::Reader::installedModels()) {
    if (!say(output, model)) return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace Nimbrel;
  Reader::restrain();
  const QCoreApplication application(argc, argv);
  auto* output = takeStandardOutput();
  if (output != nullptr && argc > 1 && std::string_view(argv[1]) == "--languages") return listLanguages(output);
  if (output == nullptr || !say(output, std::string(Reader::ready))) return 1;

  Reader::Desk desk;
  for (std::string line; std::getline(std::cin, line);) {
    const auto request = Reader::decodedRequest(line);
    const auto tellBegun = [output] { static_cast<void>(say(output, std::string(Reader::begun))); };
    const Reader::Answer answer{request ? desk.answer(*request, tellBegun) : PictureReading()};
    if (!say(output, Reader::encoded(answer))) return 1;
  }
  return 0;
}
