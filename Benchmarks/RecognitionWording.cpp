#include "RecognitionWording.h"

namespace Nimbrel::Benchmarks {

namespace {

QStringList list(const char* words) { return QString::fromUtf8(words).split(u' '); }

const QStringList words = list(
    "the a of to and in for with on at from by an is are was will can must about after again almost along already "
    "always amount another answer archive arrive autumn balance basket because become before begin behind better "
    "between "
    "boat bottle bridge bright bring build button camera careful carry center change cheap check choose circle city "
    "clean "
    "clear close coffee colour column common compare complete contract copper corner country course cover create "
    "credit "
    "current customer daily danger deliver depend desk detail different dinner direct discount distance double draft "
    "drive "
    "early east edge effort either empty energy engine enough enter equal evening every exact example except expect "
    "failure family fast feature field figure final finish first floor follow forest forward friend front function "
    "future "
    "garden general gentle ground group growth guest half happen harbour heavy height history holiday hour house "
    "hundred "
    "idea image import improve include income inside interest invoice island jacket journey keep kitchen label ladder "
    "language large later leather length letter level light limit list little local machine manual margin market "
    "matter "
    "measure meeting member message metal middle minute modern moment monthly morning mountain move narrow nature "
    "nearly "
    "network never normal notice number object offer office often option order other outside owner package paper "
    "parcel "
    "partner pattern people perhaps picture plain planet player pocket point possible power present price private "
    "problem "
    "process product project promise proper protect public purple quality quarter question quick quiet rather reach "
    "ready "
    "reason receive recent record reduce region remove repair repeat report request result return review river round "
    "sample "
    "schedule season second section select send server service setting several shelf short silver simple single small "
    "smooth sound south special spring square stable station storage street strong student subject summer supply "
    "surface "
    "system table target team thing thread ticket today together tomorrow total tower track travel under until update "
    "upper "
    "useful value version village visit volume waiting warm water weather weekly welcome west while white window "
    "winter "
    "without wonder wooden work yellow yesterday young zone");
const QStringList names = list(
    "Anna Bernd Clara Dmitri Elena Farid Greta Hugo Ingrid Jonas Karim Lena Mateo Nadia Oskar Paula Quentin Rosa "
    "Stefan "
    "Tamara Ulrich Vera Wanda Xavier Yusuf Zoe Fiona Gareth Imogen Jasper");
const QStringList surnames = list(
    "Albrecht Baptiste Carlsson Delgado Eriksen Fontaine Grimaldi Hoffmann Ibsen Jankowski Keller Lindqvist Moreau "
    "Novak Okafor Petrov Quinn Rossi Schneider Takahashi Underwood Vogel Whitfield Yilmaz Zimmer McAllister");
const QStringList companies =
    list("Brightwater Corvane Dunmere Ellinor Fenwick Galdor Hexley Ivarsen Juniper Kestrel Lumeno");
const QStringList kinds = list("Ltd. GmbH Inc. AG Studio Partners Logistics Foods Systems Energy");
const QStringList endings = list("com net org io dev de eu");
const QStringList extensions = list("pdf png txt csv docx json zip mp4 svg xlsx cpp py md log");
const QStringList verbs =
    list("get set load read write find make open close parse build count merge split update remove");
const QStringList months =
    list("January February March April May June July August September October November December");

QString capitalised(QString text) {
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

}  // namespace

QString Wording::digits(int count) {
  QString text;
  for (int i = 0; i < count; ++i) text += QChar(u'0' + upTo(10));
  return text;
}

QString Wording::word() { return anyOf(words); }

QString Wording::title(int count) {
  QStringList result;
  for (int i = 0; i < count; ++i) result << (i == 0 || oneIn(2) ? capitalised(word()) : word());
  return result.join(u' ');
}

QString Wording::sentence(int count) {
  QStringList result;
  for (int i = 0; i < count; ++i) {
    auto next = word();
    if (oneIn(17)) next = anyOf(names);
    if (oneIn(21)) next = number();
    if (oneIn(40)) next = price();
    if (oneIn(31)) next = QStringLiteral("\"") + next + QStringLiteral("\"");
    if (oneIn(45)) next = QStringLiteral("(") + next + QStringLiteral(")");
    if (oneIn(13) && i + 1 < count) next += oneIn(4) ? u';' : u',';
    if (oneIn(60)) next += QStringLiteral(" -");
    result << next;
  }
  return capitalised(result.join(u' ')) + (oneIn(6) ? u'?' : oneIn(9) ? u'!' : u'.');
}

QString Wording::person() { return anyOf(names) + u' ' + anyOf(surnames); }

QString Wording::company() { return anyOf(companies) + u' ' + anyOf(kinds); }

QString Wording::email() {
  return anyOf(names).toLower() + u'.' + anyOf(surnames).toLower() + u'@' + anyOf(companies).toLower() + u'.' +
         anyOf(endings);
}

QString Wording::address() {
  auto text = QStringLiteral("https://") + (oneIn(2) ? QStringLiteral("www.") : QString()) +
              anyOf(companies).toLower() + u'.' + anyOf(endings) + u'/' + word();
  if (oneIn(2)) text += u'/' + word() + u'-' + word();
  if (oneIn(3)) text += QStringLiteral("?id=") + digits(4);
  return text;
}

QString Wording::file() {
  static const QStringList separators{QStringLiteral("_"), QStringLiteral("-"), QStringLiteral(" ")};
  auto text = word() + anyOf(separators) + word();
  if (oneIn(2)) text += anyOf(separators) + digits(1 + upTo(4));
  return text + u'.' + anyOf(extensions);
}

QString Wording::path() {
  return (oneIn(2) ? QStringLiteral("/home/") + anyOf(names).toLower() : QStringLiteral("/var/") + word()) + u'/' +
         word() + u'/' + word() + u'.' + anyOf(extensions);
}

QString Wording::identifier() {
  switch (upTo(4)) {
    case 0:
      return anyOf(verbs) + capitalised(word()) + capitalised(word());
    case 1:
      return word() + u'_' + word();
    case 2:
      return capitalised(word()) + capitalised(word());
    default:
      return word().toUpper() + u'_' + word().toUpper();
  }
}

QString Wording::price() {
  static const QStringList signs{QStringLiteral("$"), QStringLiteral("€"), QStringLiteral("£")};
  const auto amount =
      (oneIn(4) ? QString::number(1 + upTo(9)) + u',' + digits(3) : QString::number(1 + upTo(900))) + u'.' + digits(2);
  return oneIn(4) ? amount + QStringLiteral(" EUR") : anyOf(signs) + amount;
}

QString Wording::number() {
  switch (upTo(4)) {
    case 0:
      return QString::number(upTo(100)) + u'%';
    case 1:
      return QString::number(upTo(90)) + u'.' + digits(1 + upTo(2));
    case 2:
      return QString::number(1 + upTo(900)) + u',' + digits(3);
    default:
      return QString::number(upTo(5000));
  }
}

QString Wording::date() {
  const int day = 1 + upTo(28);
  const int month = upTo(12);
  const int year = 2019 + upTo(8);
  const auto padded = [](int value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
  switch (upTo(3)) {
    case 0:
      return QString::number(day) + u' ' + months[month] + u' ' + QString::number(year);
    case 1:
      return padded(day) + u'.' + padded(month + 1) + u'.' + QString::number(year);
    default:
      return QString::number(year) + u'-' + padded(month + 1) + u'-' + padded(day);
  }
}

QString Wording::time() {
  return QStringLiteral("%1:%2").arg(upTo(24), 2, 10, QLatin1Char('0')).arg(upTo(60), 2, 10, QLatin1Char('0'));
}

QString Wording::key() {
  static const QString letters = QStringLiteral("ABCDEFGHJKMNPQRSTUVWXYZ23456789");
  QString text;
  for (int i = 0; i < 3 + upTo(3); ++i) {
    if (i > 0) text += u'-';
    for (int j = 0; j < 4; ++j) text += letters[upTo(static_cast<int>(letters.size()))];
  }
  return text;
}

QString Wording::codeLine() {
  switch (upTo(9)) {
    case 0:
      return QStringLiteral("const auto ") + word() + QStringLiteral(" = ") + identifier() + QStringLiteral("(") +
             word() + QStringLiteral(", ") + number() + QStringLiteral(");");
    case 1:
      return QStringLiteral("if (") + identifier() + QStringLiteral(" == nullptr) return ") + QString::number(upTo(9)) +
             u';';
    case 2:
      return QStringLiteral("// ") + sentence(5 + upTo(6));
    case 3:
      return QStringLiteral("for (int i = 0; i < ") + word() + QStringLiteral(".size(); ++i) {");
    case 4:
      return QStringLiteral("#include <") + word() + QStringLiteral("/") + word() + QStringLiteral(".h>");
    case 5:
      return QStringLiteral("return ") + word() + QStringLiteral(".") + identifier() + QStringLiteral("(\"") + word() +
             u' ' + word() + QStringLiteral("\");");
    case 6:
      return QStringLiteral("def ") + word() + u'_' + word() + QStringLiteral("(self, ") + word() +
             QStringLiteral("=") + QString::number(upTo(100)) + QStringLiteral("):");
    case 7:
      return QStringLiteral("std::vector<") + identifier() + QStringLiteral("> ") + word() + QStringLiteral("{") +
             digits(2) + QStringLiteral(", ") + digits(3) + QStringLiteral("};");
    default:
      return word() + QStringLiteral("->") + identifier() + QStringLiteral(" += ") + word() + QStringLiteral("[") +
             QString::number(upTo(20)) + QStringLiteral("] * ") + digits(2) + u';';
  }
}

QString Wording::shellLine() {
  switch (upTo(8)) {
    case 0:
      return QStringLiteral("$ git commit -m \"") + title(3) + QStringLiteral("\"");
    case 1:
      return QStringLiteral("-rw-r--r-- 1 ") + anyOf(names).toLower() + QStringLiteral(" users ") + digits(5) + u' ' +
             date() + u' ' + word() + u'.' + anyOf(extensions);
    case 2:
      return QStringLiteral("[") + time() + QStringLiteral(":") + digits(2) + QStringLiteral("] INFO ") + identifier() +
             QStringLiteral(": ") + sentence(4 + upTo(4));
    case 3:
      return QStringLiteral("$ ls -la ") + path();
    case 4:
      return QStringLiteral("error: ") + path() + QStringLiteral(":") + digits(3) + QStringLiteral(": ") + word() +
             u' ' + word() + QStringLiteral(" not found");
    case 5:
      return QStringLiteral("Downloading ") + address();
    case 6:
      return digits(3) + QStringLiteral(" passed, ") + digits(1) + QStringLiteral(" failed in ") + digits(1) +
             QStringLiteral(".") + digits(2) + QStringLiteral("s");
    default:
      return QStringLiteral("$ sudo apt install ") + word() + u'-' + word() + QStringLiteral(" --") + word() +
             QStringLiteral("=") + number();
  }
}

}  // namespace Nimbrel::Benchmarks
