#include "registry/registry_file.h"

#include <QStringDecoder>
#include <QtEndian>

namespace qbx {
namespace {

constexpr QLatin1String kHeader("Windows Registry Editor Version 5.00");
constexpr RegistryType kExpandableText{2};  // REG_EXPAND_SZ: never written by the program, but kept

/// A line that cannot be read. Thrown and caught in this file.
struct Damage {
  QString what;
};

QByteArray Utf16Bytes(const QString& text) {
  QByteArray bytes((text.size() + 1) * 2, '\0');
  qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
  return bytes;
}

QString TextOfUtf16(const QByteArray& bytes) {
  QString text(bytes.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<char16_t>(bytes.constData(), text.size(), text.data());
  while (text.endsWith(QChar(0)))
    text.chop(1);
  return text;
}

class RegistryParser {
 public:
  RegistryParser(const QString& text, const QString& rootName, RegistryTree* tree)
      : text_(text), rootName_(rootName), tree_(tree), key_(&tree->MakePath({})) {}

  /// \return what is wrong; empty when nothing is
  QString Parse() {
    try {
      if (TakeLine().trimmed() != kHeader) throw Damage{QStringLiteral("it does not begin with \"%1\"").arg(kHeader)};
      for (qsizetype counted = 0; at_ < text_.size(); ParseLine()) {
        line_ += QStringView(text_).mid(counted, at_ - counted).count(u'\n');
        counted = at_;
      }
      return {};
    } catch (const Damage& damage) {
      return QStringLiteral("line %1: %2").arg(line_).arg(damage.what);
    }
  }

 private:
  void ParseLine() {
    const QChar first = text_[at_];
    if (first == u'"' || first == u'@') {
      ParseValue();
      return;
    }
    const QString line = TakeLine().trimmed();
    if (line.startsWith(u';')) {
      key_->comments.append(line);
    } else if (line.startsWith(u'[')) {
      ParseKey(line);
    } else if (!line.isEmpty()) {
      throw Damage{QStringLiteral("it is neither a key nor a value nor a comment")};
    }
  }

  void ParseKey(const QString& line) {
    if (!line.endsWith(u']')) throw Damage{QStringLiteral("the key's \"]\" is missing")};
    const QString path = line.mid(1, line.size() - 2);
    const bool isRoot = path.compare(rootName_, Qt::CaseInsensitive) == 0;
    if (!isRoot && !path.startsWith(rootName_ + u'\\', Qt::CaseInsensitive)) {
      throw Damage{QStringLiteral("the key is not below %1").arg(rootName_)};
    }
    const QString below = path.mid(rootName_.size());
    if (RegistryTree::TooDeep(below)) throw Damage{QStringLiteral("the key stands too deep")};
    key_ = &tree_->MakePath(below);
  }

  void ParseValue() {
    RegistryValue value;
    if (text_[at_] == u'@') {
      ++at_;
    } else {
      value.name = TakeQuoted();
    }
    if (at_ >= text_.size() || text_[at_] != u'=') throw Damage{QStringLiteral("\"=\" is missing")};
    ++at_;
    if (at_ < text_.size() && text_[at_] == u'"') {
      value.data = TakeQuoted();
      if (!TakeLine().trimmed().isEmpty()) throw Damage{QStringLiteral("there is more behind the value")};
    } else {
      ParseData(TakeContinuedLine(), &value);
    }
    if (key_->FindValue(value.name) != nullptr) throw Damage{QStringLiteral("the value stands there twice")};
    key_->values.push_back(value);
  }

  static void ParseData(const QString& data, RegistryValue* value) {
    const qsizetype colon = data.indexOf(u':');
    const QString kind = data.left(colon).toLower();
    if (colon > 0 && kind == QLatin1String("dword")) {
      value->type = RegistryType::kNumber;
      value->data = QString::number(Number(data.mid(colon + 1), 8));
    } else if (colon > 0 && kind == QLatin1String("hex")) {
      value->type = RegistryType::kBinary;
      value->data = QString::fromLatin1(Bytes(data.mid(colon + 1)).toHex());
    } else if (colon > 0 && kind.startsWith(QLatin1String("hex(")) && kind.endsWith(u')')) {
      ParseTypedBytes(Number(kind.mid(4, kind.size() - 5), 8), Bytes(data.mid(colon + 1)), value);
    } else {
      throw Damage{QStringLiteral("the value is neither a text nor dword: nor hex:")};
    }
  }

  static void ParseTypedBytes(quint32 type, const QByteArray& bytes, RegistryValue* value) {
    value->type = static_cast<RegistryType>(type);
    if (value->type == RegistryType::kNumber) throw Damage{QStringLiteral("a number is written as dword:")};
    const bool isText = value->type == RegistryType::kText || value->type == kExpandableText;
    value->data = isText ? TextOfUtf16(bytes) : QString::fromLatin1(bytes.toHex());
  }

  static quint32 Number(const QString& digits, qsizetype longest) {
    bool good = false;
    const quint32 number = digits.trimmed().toUInt(&good, 16);
    if (!good || digits.trimmed().size() > longest) {
      throw Damage{QStringLiteral("\"%1\" is no hexadecimal number").arg(digits)};
    }
    return number;
  }

  static QByteArray Bytes(const QString& list) {
    QByteArray bytes;
    if (list.trimmed().isEmpty()) return bytes;
    for (const QString& pair : list.split(u','))
      bytes.append(static_cast<char>(Number(pair, 2)));
    return bytes;
  }

  /// The text between the quotes at the current place, which moves past the closing quote. A text may span several
  /// lines.
  QString TakeQuoted() {
    QString text;
    for (++at_; at_ < text_.size(); ++at_) {
      const QChar character = text_[at_];
      if (character == u'"') {
        ++at_;
        return text;
      }
      text.append(character == u'\\' ? TakeEscape() : character);
    }
    throw Damage{QStringLiteral("the closing quote is missing")};
  }

  QChar TakeEscape() {
    ++at_;
    const QChar character = at_ < text_.size() ? text_[at_] : QChar(0);
    if (character == u'\\' || character == u'"') return character;
    if (character == u'n') return u'\n';
    if (character == u'r') return u'\r';
    throw Damage{QStringLiteral(
        "a backslash stands before a character other than \\, \", n or r; write \\ inside quotes twice")};
  }

  QString TakeLine() {
    const qsizetype end = text_.indexOf(u'\n', at_);
    const qsizetype next = end < 0 ? text_.size() : end + 1;
    QString line = text_.mid(at_, next - at_);
    at_ = next;
    return line;
  }

  /// A line, joined with the next one as long as it ends in a backslash.
  QString TakeContinuedLine() {
    QString line = TakeLine().trimmed();
    while (line.endsWith(u'\\')) {
      line.chop(1);
      line = line.trimmed() + TakeLine().trimmed();
    }
    return line;
  }

  const QString& text_;
  const QString& rootName_;
  RegistryTree* tree_;
  RegistryKey* key_;
  qsizetype at_ = 0;
  qsizetype line_ = 1;
};

QByteArray QuotedAndEscaped(QString text) {
  text.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
  text.replace(u'\r', QLatin1String("\\r")).replace(u'\n', QLatin1String("\\n"));
  return '"' + text.toUtf8() + '"';
}

QByteArray DataText(const RegistryValue& value) {
  if (value.type == RegistryType::kText) return QuotedAndEscaped(value.data);
  if (value.type == RegistryType::kNumber) {
    return "dword:" + QByteArray::number(value.data.toUInt(), 16).rightJustified(8, '0');
  }
  const QByteArray bytes =
      value.type == kExpandableText ? Utf16Bytes(value.data) : QByteArray::fromHex(value.data.toLatin1());
  const QByteArray kind = value.type == RegistryType::kBinary
                              ? QByteArray("hex:")
                              : "hex(" + QByteArray::number(static_cast<quint32>(value.type), 16) + "):";
  return kind + bytes.toHex(',');
}

void FormatKey(const RegistryKey& key, const QString& path, bool isRoot, QByteArray* out) {
  if (!isRoot || !key.values.empty()) *out += "\n[" + path.toUtf8() + "]\n";
  for (const QString& comment : key.comments)
    *out += comment.toUtf8() + '\n';
  for (const RegistryValue& value : key.values) {
    *out += (value.name.isEmpty() ? QByteArray("@") : QuotedAndEscaped(value.name)) + '=' + DataText(value) + '\n';
  }
  for (const auto& subKey : key.subKeys)
    FormatKey(*subKey, path + u'\\' + subKey->name, false, out);
}

}  // namespace

QString ParseRegistryFile(const QByteArray& bytes, const QString& rootName, RegistryTree* tree) {
  if (bytes.isEmpty()) return {};
  const bool isUtf16 = bytes.startsWith("\xFF\xFE");
  if (!isUtf16 && !bytes.isValidUtf8()) return QStringLiteral("it is not UTF-8 text");
  QStringDecoder decoder(isUtf16 ? QStringDecoder::Utf16LE : QStringDecoder::Utf8);
  const QString text = decoder(bytes);
  return RegistryParser(text, rootName, tree).Parse();
}

QByteArray FormatRegistryFile(const RegistryTree& tree, const QString& rootName) {
  QByteArray out = QByteArray(kHeader.data(), kHeader.size()) + '\n';
  FormatKey(tree.Root(), rootName, true, &out);
  return out;
}

QString CheckRegistryValue(const RegistryValue& value) {
  if (value.name.contains(QChar(0))) return QStringLiteral("The name of a registry value cannot hold a NUL character.");
  switch (value.type) {
    case RegistryType::kText:
      return value.data.contains(QChar(0)) ? QStringLiteral("A registry text cannot hold a NUL character.") : QString();
    case RegistryType::kNumber: {
      bool good = false;
      value.data.toUInt(&good);
      return good ? QString() : QStringLiteral("\"%1\" is no number from 0 to 4294967295.").arg(value.data);
    }
    case RegistryType::kBinary:
      if (QByteArray::fromHex(value.data.toLatin1()).toHex() == value.data.toLatin1().toLower()) return {};
      return QStringLiteral("\"%1\" is not made of pairs of hexadecimal digits.").arg(value.data);
  }
  return QStringLiteral("Registry values of the type %1 cannot be written.").arg(static_cast<quint32>(value.type));
}

}  // namespace qbx
