#include "Linux/Network/QtHttpsFetcher.h"

#include "Linux/Factory.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>

#include <chrono>

namespace Nimbrel {

namespace {

constexpr int mostRedirects = 5;
// Without a byte, and altogether: nobody waits, but nothing hangs for ever either.
constexpr std::chrono::milliseconds longestSilence = std::chrono::seconds(30);
constexpr std::chrono::milliseconds longestAnswer = std::chrono::minutes(30);
constexpr int statusOfAnAnswer = 200;

/// Why a request came to nothing, as far as our own limits are not the reason.
std::string reasonOf(const QNetworkReply& reply) {
  switch (reply.error()) {
    case QNetworkReply::InsecureRedirectError:
      return "the server leads to an address that is not https";
    case QNetworkReply::TooManyRedirectsError:
      return "the server leads from one address to the next";
    case QNetworkReply::SslHandshakeFailedError:
      return "the server cannot prove who it is";
    case QNetworkReply::OperationCanceledError:
      return "the server does not answer";
    default:
      break;
  }
  const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  const bool isRefusal = status != 0 && status != statusOfAnAnswer;
  return isRefusal ? "the server answers with status " + std::to_string(status) : reply.errorString().toStdString();
}

/// Gathers one answer. Belongs to the reply, which it disposes of when it has told what came of it.
class Gathering final : public QObject {
 public:
  Gathering(QNetworkReply& reply, std::uint64_t mostBytes, QObject* context, HttpsFetcher::Then then)
      : QObject(&reply), reply_(reply), mostBytes_(mostBytes), context_(context), then_(std::move(then)) {
    connect(&reply, &QNetworkReply::metaDataChanged, this, &Gathering::lookAtLength);
    connect(&reply, &QIODevice::readyRead, this, &Gathering::take);
    // In a later turn, whatever happens.
    connect(&reply, &QNetworkReply::finished, this, &Gathering::end, Qt::QueuedConnection);
    connect(context, &QObject::destroyed, &reply, &QNetworkReply::abort);
    QTimer::singleShot(longestAnswer, &reply, &QNetworkReply::abort);
  }

 private:
  /// Of a redirection, which has a body of its own, nothing is kept.
  [[nodiscard]] bool isAnswer() const {
    return reply_.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == statusOfAnAnswer;
  }

  void lookAtLength() {
    const auto length = reply_.header(QNetworkRequest::ContentLengthHeader);
    if (isAnswer() && length.isValid() && length.toULongLong() > mostBytes_) refuse();
  }

  void take() {
    const auto piece = reply_.readAll();
    if (!isAnswer() || isTooLong_) return;
    if (static_cast<std::uint64_t>(piece.size()) > mostBytes_ - answer_.size()) return refuse();
    answer_.append(piece.constData(), static_cast<std::size_t>(piece.size()));
  }

  void refuse() {
    isTooLong_ = true;
    reply_.abort();
  }

  void end() {
    reply_.deleteLater();
    if (!context_) return;
    // Whoever is told may take the fetcher away, and this with it.
    const auto then = std::move(then_);
    if (isTooLong_) return then(Error{"the answer is larger than it may be"});
    if (reply_.error() != QNetworkReply::NoError || !isAnswer()) return then(Error{reasonOf(reply_)});
    then(std::move(answer_));
  }

  QNetworkReply& reply_;
  std::uint64_t mostBytes_;
  QPointer<QObject> context_;
  HttpsFetcher::Then then_;
  std::string answer_;
  bool isTooLong_ = false;
};

QNetworkRequest requestTo(const QUrl& url, const QSslConfiguration& trust) {
  QNetworkRequest request(url);
  request.setSslConfiguration(trust);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setMaximumRedirectsAllowed(mostRedirects);
  request.setTransferTimeout(static_cast<int>(longestSilence.count()));
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  for (const auto attribute : {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
                               QNetworkRequest::AuthenticationReuseAttribute}) {
    request.setAttribute(attribute, QNetworkRequest::Manual);
  }
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Nimbrel"));
  // Else it would tell the user's language.
  request.setRawHeader("Accept-Language", "*");
  // Nothing is unpacked, so that what is counted is what is kept.
  request.setRawHeader("Accept-Encoding", "identity");
  return request;
}

class QtHttpsFetcher final : public HttpsFetcher {
 public:
  explicit QtHttpsFetcher(const std::optional<std::string>& authorities) {
    if (authorities) {
      trust_.setCaCertificates(QSslCertificate::fromData(QByteArray::fromStdString(*authorities), QSsl::Pem));
    }
    trust_.setProtocol(QSsl::TlsV1_2OrLater);
  }

  void fetch(const Request& request, QObject* context, Then then) override {
    const auto url = QUrl::fromEncoded(QByteArray::fromStdString(request.url), QUrl::StrictMode);
    if (url.scheme() != QLatin1String("https") || url.host().isEmpty() || !url.userInfo().isEmpty()) {
      const auto refuse = [then = std::move(then)] { then(Error{"the address is not https"}); };
      QMetaObject::invokeMethod(context, refuse, Qt::QueuedConnection);
      return;
    }
    auto* reply = manager_.get(requestTo(url, trust_));
    new Gathering(*reply, request.mostBytes, context, std::move(then));
  }

 private:
  QSslConfiguration trust_ = QSslConfiguration::defaultConfiguration();
  QNetworkAccessManager manager_;
};

}  // namespace

std::unique_ptr<HttpsFetcher> makeQtHttpsFetcher(const std::optional<std::string>& authorities) {
  return std::make_unique<QtHttpsFetcher>(authorities);
}

std::unique_ptr<HttpsFetcher> makeHttpsFetcher() { return makeQtHttpsFetcher(std::nullopt); }

}  // namespace Nimbrel
