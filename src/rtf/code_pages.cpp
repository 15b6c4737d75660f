#include "rtf/code_pages.h"

#include <array>

#include "util/windows1252.h"

namespace qbx {
namespace {

constexpr std::array<std::pair<int, int>, 20> kCharsets{
    {{0, 1252},   {2, kSymbolCodePage}, {77, 10000}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},
     {136, 950},  {161, 1253},          {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
     {204, 1251}, {222, 874},           {238, 1250}, {254, 437},  {255, 850},  {1, 0}}};

QByteArray DecoderName(int codePage) {
  switch (codePage) {
    case 932:
      return "Shift_JIS";
    case 936:
      return "GBK";
    case 950:
      return "Big5";
    case 10000:
      return "macintosh";
    case 65001:
      return "UTF-8";
    default:
      return (codePage < 874 ? "IBM" : "windows-") + QByteArray::number(codePage);
  }
}

}  // namespace

int CodePageOfCharset(int charset) {
  for (const auto& [known, codePage] : kCharsets) {
    if (known == charset) return codePage;
  }
  return 0;
}

QString CodePages::Decode(const QByteArray& bytes, int codePage) {
  if (codePage == kSymbolCodePage) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& unit : text)
      unit = QChar(unit.unicode() | 0xF000);
    return text;
  }
  auto found = decoders_.find(codePage);
  if (found == decoders_.end()) {
    const QByteArray name = codePage == 1252 ? QByteArray() : DecoderName(codePage);
    found = decoders_.emplace(codePage, name.isEmpty() ? QStringDecoder() : QStringDecoder(name.constData())).first;
  }
  QStringDecoder& decoder = found->second;
  if (!decoder.isValid()) return FromWindows1252(bytes);
  decoder.resetState();
  return decoder.decode(bytes);
}

}  // namespace qbx
