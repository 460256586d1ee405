#pragma once

#include <string_view>

/// Which dotted names are host names. Any thread.
namespace Nimbrel::HostNames {

/// Whether a name that stands in a text without a scheme ("example.com") is meant as a host. `host` is without port;
/// `country` is the user's, as two lower-case letters, whose domain is trusted more than others. Much that looks like a
/// host is none: files ("main.py"), members in code ("user.id"), package names ("org.example.io"), abbreviations. So
/// domains that are also words are hosts only when a path follows, those that are also file extensions never.
[[nodiscard]] bool isBareHost(std::u16string_view host, std::u16string_view path, std::u16string_view country);

/// Whether the name ends like that of a picture or a document, as in "icon@2x.png".
[[nodiscard]] bool endsLikeAFile(std::u16string_view name);

}  // namespace Nimbrel::HostNames
