#include "Analysis/DetectedTesting.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using Testing::idsIn;
using ::testing::IsEmpty;
using Testing::UserLocaleIs;

constexpr const char* code = R"(#include <vector>
#include "Main.h"

namespace app::io {

static const char* const names[] = {"index.html", "main.cpp", "README.md", "style.css", "a.out"};

int main(int argc, char** argv) {
  std::vector<int> sizes{1024, 768, 1920, 1080, 65535, 16777216};
  const auto user = session.user.name;
  if (config.host.empty() || node.id == 0x6502530000) return -1;
  for (int i = 0; i < 10; ++i) sizes.at(i) += i * 3 / 4;
  self.app.run(host="0.0.0.0", port=8080);
  console.log(`${this.state.items.length} of ${total}`);
  return std::printf("%02d:%02d.%03d\n", 3, 12, 500);  // see issue 12345678
}
const version = "2.14.0-rc.1+build.20261121"; let date = Date.now(); let today_ = 5;
import java.util.List; import org.apache.commons.io; @Override public void onNext(Item item) {}
    at com.example.app.Main.run(Main.java:42)
ssh-rsa AAAAB3NzaC1yc2E/650-253-0000= user@host
)";

constexpr const char* log = R"([    0.000000] Linux version 6.1.0-18-amd64 (gcc-12 (Debian 12.2.0-14) 12.2.0)
[   12.345678] pci 0000:00:1f.2: reg 0x10: [io  0xf0d0-0xf0d7]
00:03:12 INFO  worker-1 finished in 12 minutes, 1048576 bytes
00:03:13.123 WARN  10.0.0.12:443 -> 192.168.100.200:52344 retry 3/5
00:03:14 DEBUG id=550e8400-e29b-41d4-a716-446655440000 sha256=9f86d081884c7d659a2feaa0c55ad015a3bf4f1b
eth0: 02:42:ac:11:00:02 inet 172.17.0.2/16 fe80::42:acff:fe11:2
00000000  48 65 6c 6c 6f 20 57 6f  72 6c 64 0a 01 23 45 67  |Hello World..#Eg|
00000010  20 31 32 33 34 35 36 37  38 39 30 31 32 33 34 35  | 123456789012345|
progress 45% 12.3 MB/s eta 00:45 elapsed 01:23:45
exit status 139 pid 123456 uid 1000 ratio 16:9 score 3:2
)";

constexpr const char* prices = R"(Article 10045-22  Desk lamp           $1,299.00
Art. 4711-0815   Office chair XL      1.299,00 €
SKU 650-253-0000 USB drive 16 GB      24.99 EUR
ISBN 978-3-16-148410-0                19,95 €
Order 202-555-0123   Invoice no. 2026-0042
Subtotal 2,623.98   VAT 19%  498.56
Total 3 122.54   Paid 4111 1111 1111 1111
3 for 2, 1/2 price, 50 % off, 12 x 0.5 l
IBAN DE89 3704 0044 0532 0130 00
)";

constexpr const char* files = R"(total 1048576
-rw-r--r-- 1 user user   12345678 main.cpp
-rw-r--r-- 1 user user     245760 archive-1.2.3.tar.gz
drwxr-xr-x 2 user user       4096 node_modules
photo_20261121_140533.jpg   3.4 MB
IMG-20261121-WA0001.jpeg    1 024 KB
icon@2x.png  logo.svg  data.zip  run.sh  lib.rs  setup.py  index.pl  libfoo.so.1.2.3  Makefile.am
backup-2026-11-21.sql.gz  report.v2.final.docx  2026-11-21.log
)";

TEST(DetectedNothing, StandsInAPageOfCode) {
  EXPECT_THAT(idsIn(code), IsEmpty());
  const UserLocaleIs german("de_DE.UTF-8");
  EXPECT_THAT(idsIn(code), IsEmpty());
}

TEST(DetectedNothing, StandsInALog) {
  EXPECT_THAT(idsIn(log), IsEmpty());
  const UserLocaleIs german("de_DE.UTF-8");
  EXPECT_THAT(idsIn(log), IsEmpty());
}

TEST(DetectedNothing, StandsInAListOfPrices) {
  EXPECT_THAT(idsIn(prices), IsEmpty());
  const UserLocaleIs german("de_DE.UTF-8");
  EXPECT_THAT(idsIn(prices), IsEmpty());
  const UserLocaleIs french("fr_FR.UTF-8");
  EXPECT_THAT(idsIn(prices), IsEmpty());
}

TEST(DetectedNothing, StandsInAListOfFiles) {
  EXPECT_THAT(idsIn(files), IsEmpty());
  const UserLocaleIs german("de_DE.UTF-8");
  EXPECT_THAT(idsIn(files), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
