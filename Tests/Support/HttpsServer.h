#pragma once

#include "Support/TestAuthority.h"

#include <QByteArray>
#include <QObject>
#include <QSslServer>
#include <QTcpSocket>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A server on the loopback device that answers from the event loop of the test what that has laid out.
class HttpsServer final : public QObject {
 public:
  explicit HttpsServer(const TestAuthority::Identity& identity);

  struct Answer {
    int status = 200;
    std::string body = {};
    std::string location = {};       ///< for a redirection
    bool saysLength = true;          ///< of the body, before it
    bool isEndless = false;          ///< the body over and over, until nobody reads any more
    std::int64_t claimsLength = -1;  ///< in place of the true one
    bool isSilent = false;           ///< no answer at all
  };
  std::map<std::string, Answer> answers;  ///< by path; anything else is not found

  /// The address of a path.
  [[nodiscard]] std::string url(const std::string& path) const;
  [[nodiscard]] int port() const { return server_.serverPort(); }

  std::vector<std::string> paths;  ///< that were asked for, in order
  std::string lastRequest;         ///< with its headers
  std::int64_t bytesSent = 0;
  int connections = 0;
  int open = 0;  ///< connections that have not ended

 private:
  void greet();
  void hear(QTcpSocket& socket);
  void answer(QTcpSocket& socket, const std::string& path);

  QSslServer server_;
  std::map<QTcpSocket*, QByteArray> heard_;
};

}  // namespace Nimbrel::Testing
