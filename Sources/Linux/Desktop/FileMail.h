#pragma once

#include <string>

/// E-mails with a file. Any thread.
namespace Nimbrel::FileMail {

/// Begins one in the user's program for e-mail: through the desktop's portal, else by the script that desktops have for
/// it, else by an address that names the file, which not every program heeds. What cannot be done is a matter for the
/// log. Waits for the desktop.
void compose(const std::string& path);

}  // namespace Nimbrel::FileMail
