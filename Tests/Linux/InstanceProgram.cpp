// Takes the place of the one process with an identifier over a catalogue: both are arguments, a kind of request and its
// content may follow. Says what came of it, and as the first one each request that it hears of, until it is killed.

#include "Linux/Factory.h"

#include <QCoreApplication>

#include <cstdio>
#include <string>

namespace {

using namespace Nimbrel;

StartRequest requestFrom(const QStringList& arguments) {
  StartRequest request{.activationToken = "token_TIME5"};
  const auto kind = arguments.value(3);
  const auto content = arguments.value(4).toStdString();
  if (kind == QLatin1String("open")) request.kind = StartRequest::Kind::Open;
  if (kind == QLatin1String("action")) request.kind = StartRequest::Kind::Action;
  if (request.kind == StartRequest::Kind::Open) request.files = {content};
  if (request.kind == StartRequest::Kind::Action) request.action = content;
  return request;
}

void say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

void report(const StartRequest& request) {
  switch (request.kind) {
    case StartRequest::Kind::Activate:
      return say("activate " + request.activationToken);
    case StartRequest::Kind::Open:
      return say("open " + (request.files.empty() ? "" : request.files.front()));
    case StartRequest::Kind::Action:
      return say("action " + request.action);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto arguments = QCoreApplication::arguments();
  const auto instance = makeSingleInstance(arguments.value(1).toStdString(), arguments.value(2).toStdString());
  switch (instance->claim(requestFrom(arguments))) {
    case SingleInstance::Place::HandedOver:
      say("handed over");
      return 0;
    case SingleInstance::Place::Unanswered:
      say("unanswered");
      return 1;
    case SingleInstance::Place::First:
      break;
  }
  say("first");
  instance->listen(report);
  return QCoreApplication::exec();
}
