#include "platform/ini_file.h"

#include <QFileInfo>
#include <QList>
#include <optional>

#include "platform/safe_file.h"
#include "util/windows1252.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestValue = 255;
constexpr int kLockTimeout = 2000;  // milliseconds
constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");

QString Unquoted(const QString& value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
  return quoted ? value.mid(1, value.size() - 2) : value;
}

/// The text for the file: in quotes where reading would otherwise drop blanks or quotes of the value.
QString Quoted(const QString& value) {
  return value != value.trimmed() || Unquoted(value) != value ? u'"' + value + u'"' : value;
}

/// The file's bytes cut into lines. Lines that are not changed keep all their bytes.
class IniLines {
 public:
  explicit IniLines(const QByteArray& bytes) : isUtf8_(bytes.isValidUtf8()) {
    for (qsizetype start = 0; start < bytes.size();) {
      const qsizetype end = bytes.indexOf('\n', start);
      const qsizetype next = end < 0 ? bytes.size() : end + 1;
      lines_.append(bytes.mid(start, next - start));
      start = next;
    }
    lineEnd_ = lines_.isEmpty() || lines_.first().endsWith("\r\n") ? "\r\n" : "\n";
  }

  [[nodiscard]] std::optional<QString> Value(const QString& section, const QString& key) const {
    const Place place = Find(section, key);
    if (place.keyLine < 0) return std::nullopt;
    const QString line = Text(place.keyLine);
    return Unquoted(line.mid(line.indexOf(u'=') + 1).trimmed());
  }

  /// \return false when the file's encoding cannot hold the value
  [[nodiscard]] bool SetValue(const QString& section, const QString& key, const QString& value) {
    const QString added = section + key + value;
    if (!isUtf8_ && FromWindows1252(ToWindows1252(added)) != added) return false;
    const Place place = Find(section, key);
    if (place.keyLine >= 0) {
      ReplaceValue(place.keyLine, value);
    } else {
      AddValue(place, section, key, value);
    }
    return true;
  }

  [[nodiscard]] QByteArray Bytes() const { return lines_.join(); }

 private:
  struct Place {
    qsizetype sectionLine = -1;
    qsizetype keyLine = -1;
    qsizetype sectionEnd = -1;  ///< the line after the section's last line that is not blank
  };

  [[nodiscard]] QString Text(qsizetype index) const {
    QByteArray line = lines_[index];
    if (index == 0 && line.startsWith(kByteOrderMark)) line.remove(0, kByteOrderMark.size());
    return (isUtf8_ ? QString::fromUtf8(line) : FromWindows1252(line)).trimmed();
  }

  [[nodiscard]] QByteArray Encoded(const QString& text) const { return isUtf8_ ? text.toUtf8() : ToWindows1252(text); }

  [[nodiscard]] Place Find(const QString& section, const QString& key) const {
    Place place;
    for (qsizetype index = 0; index < lines_.size() && place.keyLine < 0; ++index) {
      const QString text = Text(index);
      if (text.startsWith(u'[')) {
        if (place.sectionLine >= 0) break;
        const QString name = text.mid(1, text.indexOf(u']') - 1).trimmed();
        if (text.contains(u']') && name.compare(section, Qt::CaseInsensitive) == 0) place = {index, -1, index + 1};
        continue;
      }
      if (place.sectionLine < 0 || text.isEmpty()) continue;
      place.sectionEnd = index + 1;
      if (text.startsWith(u';') || !text.contains(u'=')) continue;
      const QString name = text.left(text.indexOf(u'=')).trimmed();
      if (name.compare(key, Qt::CaseInsensitive) == 0) place.keyLine = index;
    }
    return place;
  }

  void ReplaceValue(qsizetype index, const QString& value) {
    QByteArray& line = lines_[index];
    const QByteArray end = line.endsWith("\r\n") ? "\r\n" : line.endsWith('\n') ? "\n" : "";
    qsizetype start = line.indexOf('=') + 1;
    while (start < line.size() && (line[start] == ' ' || line[start] == '\t'))
      ++start;
    line = line.left(start) + Encoded(Quoted(value)) + end;
  }

  void AddValue(const Place& place, const QString& section, const QString& key, const QString& value) {
    if (!lines_.isEmpty() && !lines_.last().endsWith('\n')) lines_.last().append(lineEnd_);
    qsizetype at = place.sectionEnd;
    if (place.sectionLine < 0) {
      if (!lines_.isEmpty() && !Text(lines_.size() - 1).isEmpty()) lines_.append(lineEnd_);
      lines_.append(Encoded(u'[' + section + u']') + lineEnd_);
      at = lines_.size();
    }
    lines_.insert(at, Encoded(key + u'=' + Quoted(value)) + lineEnd_);
  }

  QList<QByteArray> lines_;
  QByteArray lineEnd_;
  bool isUtf8_;
};

}  // namespace

IniFile::IniFile(QString path) : path_(std::move(path)) {}

QString IniFile::Read(const QString& section, const QString& key, const QString& defaultValue) const {
  const std::optional<QByteArray> bytes = ReadWholeFile(path_);
  if (!bytes) return defaultValue;
  const QString value = IniLines(*bytes).Value(section, key).value_or(QString()).left(kLongestValue);
  return value.isEmpty() ? defaultValue : value;
}

bool IniFile::Write(const QString& section, const QString& key, const QString& value) {
  if (value.contains(u'\n') || value.contains(u'\r') || value.contains(QChar(0))) return false;
  const FileLock lock(path_ + QStringLiteral(".lock"), kLockTimeout);
  if (!lock.Locked()) return false;
  std::optional<QByteArray> bytes = ReadWholeFile(path_);
  if (!bytes && QFileInfo::exists(path_)) return false;
  if (!bytes) bytes = QByteArray();
  if (bytes->contains('\0')) return false;  // an encoding of two bytes a character, or no text file
  IniLines lines(*bytes);
  if (!lines.SetValue(section, key, value)) return false;
  const QByteArray changed = lines.Bytes();
  return changed == *bytes || ReplaceFile(path_, changed).isEmpty();
}

}  // namespace qbx
