#pragma once

#include <string>

namespace Nimbrel::Testing {

/// A feed with one release.
inline std::string feedOf(const std::string& version, const std::string& url, std::size_t length,
                          const std::string& signature) {
  return "<rss version=\"2.0\"><channel><item><description>&lt;p&gt;Faster.&lt;/p&gt;</description><enclosure "
         "version=\"" +
         version + "\" url=\"" + url + "\" length=\"" + std::to_string(length) + "\" edSignature=\"" + signature +
         "\"/></item></channel></rss>";
}

}  // namespace Nimbrel::Testing
