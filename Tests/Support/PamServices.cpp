#include "Support/PamServices.h"

#include <pwd.h>
#include <unistd.h>

#include <QDir>

#include <array>

namespace Nimbrel::Testing {

namespace {

// Which of them is asked depends on what is installed.
constexpr std::array services{"nimbrel", "login"};

}  // namespace

PamServices::PamServices() : turn_(QDir::temp().filePath(QStringLiteral("nimbrel-tests-of-pam.lock"))) {
  // Held by a living process for as long as it takes.
  turn_.setStaleLockTime(0);
  turn_.lock();
  // The library complains without one for services that have none of their own.
  folder_.write("services/other", "auth required pam_deny.so\naccount required pam_deny.so\n");
  setPassword("secret");
  setModules("auth required MATRIX\naccount required MATRIX\n");
}

void PamServices::setPassword(const std::string& password) const {
  const std::string user = ::getpwuid(::getuid())->pw_name;
  for (const std::string service : services) {
    folder_.write("passwords-" + service, user + ":" + password + ":" + service + "\n");
  }
}

void PamServices::setModules(const std::string& lines) const {
  for (const std::string service : services) {
    const auto module = NIMBREL_PAM_MODULES "/pam_matrix.so passdb=" + folder_.path("passwords-" + service);
    const auto chatty = QStringLiteral(NIMBREL_PAM_MODULES "/pam_chatty.so");
    folder_.write("services/" + service, QString::fromStdString(lines)
                                             .replace(QLatin1String("CHATTY"), chatty)
                                             .replace(QLatin1String("MATRIX"), QString::fromStdString(module))
                                             .toStdString());
  }
}

QProcessEnvironment PamServices::in(QProcessEnvironment environment) const {
  environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(NIMBREL_PAM_WRAPPER));
  environment.insert(QStringLiteral("PAM_WRAPPER"), QStringLiteral("1"));
  environment.insert(QStringLiteral("PAM_WRAPPER_SERVICE_DIR"), QString::fromStdString(folder_.path("services")));
#ifdef __SANITIZE_ADDRESS__
  // The sanitizer wants to be the first library, and none to be bound apart from it.
  const auto options = environment.value(QStringLiteral("ASAN_OPTIONS"));
  environment.insert(QStringLiteral("ASAN_OPTIONS"), options + QLatin1String(":verify_asan_link_order=0"));
  environment.insert(QStringLiteral("UID_WRAPPER_DISABLE_DEEPBIND"), QStringLiteral("1"));
#endif
  return environment;
}

}  // namespace Nimbrel::Testing
