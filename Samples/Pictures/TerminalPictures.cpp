#include "Samples/Pictures/Pictures.h"
#include "Samples/Pictures/Terminal.h"
#include "Samples/Words.h"

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

void drawBuildTerminal(Canvas& canvas, const Occasion& occasion) {
  QStringList lines{u"^gmara@larkspur^t:^b~/src/tidepool^t$ make check"_s,
                    u"^m[ 12%]^t Compiling src/currency.ts"_s,
                    u"^m[ 25%]^t Compiling src/invoice.ts"_s,
                    u"^m[ 37%]^t Compiling src/ledger.ts"_s,
                    u"^m[ 50%]^t Compiling src/report.ts"_s,
                    u"^ywarning:^t src/report.ts:118: variable 'margin' is never read"_s,
                    u"^m[ 62%]^t Linking tidepool 2.4.1"_s,
                    u"^m[ 75%]^t Running 214 tests in 4 workers"_s,
                    u""_s,
                    u"  ^gpass^t  currency.test.ts    38 tests   0.41 s"_s,
                    u"  ^gpass^t  invoice.test.ts     61 tests   0.87 s"_s,
                    u"  ^rfail^t  ledger.test.ts      72 tests   1.12 s"_s,
                    u"  ^gpass^t  report.test.ts      43 tests   0.96 s"_s,
                    u""_s,
                    u"^r1 failed^t: Ledger > overdue > leaves out entries of the last day"_s,
                    u"    expected  ^g3^t entries"_s,
                    u"    received  ^r4^t entries"_s,
                    u"    at tests/ledger.test.ts:164:22"_s,
                    u""_s,
                    u"^m213 passed, 1 failed, %1, in 3.36 s"_s.arg(words(occasion.taken, u"yyyy-MM-dd")),
                    u"make: *** [Makefile:27: check] Error 1"_s,
                    u"^gmara@larkspur^t:^b~/src/tidepool^t$ "_s};
  if (occasion.variant == 1) {
    lines.last() += u"git status --short"_s;
    lines += u" ^rM^t src/ledger.ts"_s;
    lines += u"^gmara@larkspur^t:^b~/src/tidepool^t$ "_s;
  }
  drawTerminal(canvas, u"make check - tidepool", lines);
}

void drawServerTerminal(Canvas& canvas, const Occasion& occasion) {
  const auto day = [&occasion](int before) { return words(occasion.taken.addDays(-before), u"MMM dd"); };
  drawTerminal(canvas, u"heron - backup",
               {u"^gops@heron^t:^b~^t$ df -h --output=target,size,used,avail,pcent"_s,
                u"^mMounted on        Size   Used  Avail  Use%"_s,
                u"/                  48G    31G    15G   68%"_s,
                u"/var/lib/archive  480G   437G    19G   ^y96%"_s,
                u"/srv/backup       1.8T   1.1T   640G   64%"_s,
                u"^gops@heron^t:^b~^t$ ls -lh /srv/backup | tail -5"_s,
                u"-rw-r----- 1 ops ops 4.1G %1 02:10 archive-a.tar.zst"_s.arg(day(4)),
                u"-rw-r----- 1 ops ops 4.1G %1 02:11 archive-b.tar.zst"_s.arg(day(3)),
                u"-rw-r----- 1 ops ops 4.2G %1 02:10 archive-c.tar.zst"_s.arg(day(2)),
                u"-rw-r----- 1 ops ops 4.2G %1 02:12 archive-d.tar.zst"_s.arg(day(1)),
                u"-rw-r----- 1 ops ops  12K %1 02:12 manifest.txt"_s.arg(day(1)),
                u"^gops@heron^t:^b~^t$ ping -c 3 gateway.example.net"_s,
                u"64 bytes from 192.0.2.17: icmp_seq=1 ttl=58 time=11.4 ms"_s,
                u"64 bytes from 192.0.2.17: icmp_seq=2 ttl=58 time=10.9 ms"_s,
                u"64 bytes from 192.0.2.17: icmp_seq=3 ttl=58 time=12.2 ms"_s,
                u""_s,
                u"3 packets transmitted, 3 received, 0% packet loss, time 2004 ms"_s,
                u"^gops@heron^t:^b~^t$ uptime --pretty"_s,
                u"up 6 weeks, 2 days, 14 hours, 9 minutes"_s,
                u"^gops@heron^t:^b~^t$ "_s});
}

void drawStackTrace(Canvas& canvas, const Occasion& occasion) {
  const auto at = [&occasion](int secondsBefore) {
    return u"^m"_s + words(occasion.taken.addSecs(-secondsBefore), u"yyyy-MM-dd HH:mm:ss") + u"^t "_s;
  };
  drawTerminal(canvas, u"journal - brightmoor-orders",
               {at(19) + u"^bINFO ^t order 88213 accepted, 3 items, warehouse north"_s,
                at(18) + u"^bINFO ^t payment authorised in 412 ms"_s,
                at(17) + u"^yWARN ^t stock service slow, retry 1 of 3"_s,
                at(15) + u"^yWARN ^t stock service slow, retry 2 of 3"_s,
                at(12) + u"^rERROR^t order 88213 failed"_s,
                u"^rStockTimeoutException: no answer from stock service within 2000 ms"_s,
                u"    at brightmoor.stock.StockClient.reserve(StockClient.java:148)"_s,
                u"    at brightmoor.orders.Reservation.hold(Reservation.java:67)"_s,
                u"    at brightmoor.orders.OrderService.place(OrderService.java:231)"_s,
                u"    at brightmoor.orders.OrderQueue.next(OrderQueue.java:94)"_s,
                u"    at brightmoor.worker.Worker.run(Worker.java:52)"_s,
                u"    at java.base/java.lang.Thread.run(Thread.java:840)"_s,
                u"^rCaused by: java.net.SocketTimeoutException: Read timed out"_s,
                u"    at brightmoor.net.Channel.read(Channel.java:310)"_s,
                u"    at brightmoor.stock.StockClient.send(StockClient.java:203)"_s,
                u"    ... 5 more"_s,
                at(12) + u"^bINFO ^t order 88213 put back, next attempt in 30 s"_s,
                at(9) + u"^bINFO ^t order 88214 accepted, 1 item, warehouse south"_s,
                at(8) + u"^bINFO ^t payment authorised in 388 ms"_s,
                at(7) + u"^bINFO ^t order 88214 placed"_s,
                at(2) + u"^bINFO ^t health: 41 threads, 612 MB of heap, queue 1"_s,
                u""_s});
}

}  // namespace Nimbrel::Samples
