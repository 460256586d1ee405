#include "Support/HttpsServer.h"

#include <gtest/gtest.h>

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>

namespace Nimbrel::Testing {

namespace {

std::string headOf(const HttpsServer::Answer& answer) {
  std::string head = "HTTP/1.1 " + std::to_string(answer.status) + " Answer\r\nConnection: close\r\n";
  if (!answer.location.empty()) head += "Location: " + answer.location + "\r\n";
  const auto length = answer.claimsLength >= 0 ? answer.claimsLength : static_cast<std::int64_t>(answer.body.size());
  if (answer.saysLength) head += "Content-Length: " + std::to_string(length) + "\r\n";
  return head + "Set-Cookie: id=1\r\n\r\n";
}

}  // namespace

HttpsServer::HttpsServer(const TestAuthority::Identity& identity) {
  auto configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(QSslCertificate(QByteArray::fromStdString(identity.certificate), QSsl::Pem));
  configuration.setPrivateKey(QSslKey(QByteArray::fromStdString(identity.key), QSsl::Ec, QSsl::Pem));
  configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
  server_.setSslConfiguration(configuration);
  EXPECT_TRUE(server_.listen(QHostAddress::LocalHost)) << server_.errorString().toStdString();
  connect(&server_, &QTcpServer::pendingConnectionAvailable, this, &HttpsServer::greet);
}

std::string HttpsServer::url(const std::string& path) const {
  return "https://127.0.0.1:" + std::to_string(port()) + path;
}

void HttpsServer::greet() {
  while (auto* socket = server_.nextPendingConnection()) {
    ++connections;
    ++open;
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { hear(*socket); });
    connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 count) { bytesSent += count; });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
      --open;
      heard_.erase(socket);
      socket->deleteLater();
    });
    // What came together with the end of the handshake.
    if (socket->bytesAvailable() > 0) hear(*socket);
  }
}

void HttpsServer::hear(QTcpSocket& socket) {
  auto& request = heard_[&socket];
  request += socket.readAll();
  if (!request.contains("\r\n\r\n")) return;
  lastRequest = request.toStdString();
  const auto line = request.left(request.indexOf("\r\n")).split(' ');
  request.clear();
  ASSERT_EQ(line.size(), 3) << lastRequest;
  EXPECT_EQ(line.front(), "GET");
  paths.push_back(line[1].toStdString());
  answer(socket, paths.back());
}

void HttpsServer::answer(QTcpSocket& socket, const std::string& path) {
  const auto found = answers.find(path);
  const auto given = found != answers.end() ? found->second : Answer{.status = 404};
  if (given.isSilent) return;
  socket.write(QByteArray::fromStdString(headOf(given) + given.body));
  if (!given.isEndless) return socket.disconnectFromHost();
  // Not before all is gone, and in a turn of its own: else nothing is ever sent, and everything kept.
  auto* secured = qobject_cast<QSslSocket*>(&socket);
  const auto body = QByteArray::fromStdString(given.body);
  const auto more = [secured, body] {
    if (secured->bytesToWrite() == 0 && secured->encryptedBytesToWrite() == 0) secured->write(body);
  };
  connect(secured, &QSslSocket::encryptedBytesWritten, secured, more, Qt::QueuedConnection);
}

}  // namespace Nimbrel::Testing
