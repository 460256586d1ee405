// Vault files between our code and a few lines of Python that know nothing of it.

#include "SyncFixture.h"

#include "Platform/FileSystem.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using Testing::passphrase;
using Testing::someDate;

class ForeignVault : public Testing::SyncFixture {
 protected:
  /// Runs the script; fails the test when it fails.
  static QByteArray python(const char* action, const std::string& file, std::string_view secret,
                           const QByteArray& input = {}) {
    QProcess script;
    script.start(QStringLiteral("python3"),
                 {QStringLiteral(NIMBREL_VAULT_SCRIPT), QLatin1String(action), QString::fromStdString(file),
                  QString::fromUtf8(secret.data(), static_cast<qsizetype>(secret.size()))});
    EXPECT_TRUE(script.waitForStarted(-1)) << script.errorString().toStdString();
    script.write(input);
    script.closeWriteChannel();
    EXPECT_TRUE(script.waitForFinished(-1));
    EXPECT_EQ(script.exitCode(), 0) << script.readAllStandardError().toStdString();
    return script.readAllStandardOutput();
  }
};

TEST_F(ForeignVault, WhatWeWriteIsOpenedElsewhere) {
  const std::string path = "2024/2024-01/caf\u00e9 \"1\".png";
  std::string content(700'001, '\0');
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i * i);
  addPicture(path, content, someDate + 0.123456789);
  EXPECT_EQ(run("p\u00e4ssw\u00f6rter"), "1 sent, 0 received");
  const auto payload =
      QJsonDocument::fromJson(python("open", vault(Vault::fileName(path).value()), "p\u00e4ssw\u00f6rter")).object();
  EXPECT_EQ(payload.size(), 3);
  EXPECT_EQ(payload.value(QStringLiteral("relativePath")).toString().toStdString(), path);
  EXPECT_EQ(payload.value(QStringLiteral("modified")).toDouble(),
            secondsSince1970(FileSystem::modificationDate(library(path)).value()) - 978'307'200);
  EXPECT_EQ(payload.value(QStringLiteral("data")).toString().toLatin1(),
            QCryptographicHash::hash(QByteArray::fromStdString(content), QCryptographicHash::Sha256).toHex());
}

TEST_F(ForeignVault, WhatIsWrittenElsewhereWeOpen) {
  python("seal", vault("from elsewhere.nimbrelvault"), passphrase,
         R"({"relativePath": "sub/\u00e4.png", "modified": 721692800.5, "text": ">>>???~ \u00fc", "more": [{}, 1e5]})");
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("sub/\u00e4.png")), ">>>???~ \u00fc");
  EXPECT_EQ(FileSystem::modificationDate(library("sub/\u00e4.png")), timestamp(someDate + 0.5));
}

}  // namespace
}  // namespace Nimbrel
