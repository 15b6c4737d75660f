#include "marketingctl/text_argument.h"

#include <CLI/CLI.hpp>
#include <QFile>
#include <cstdio>

#include "util/windows1252.h"

namespace qbx::ctl {

namespace {

QString Decode(QByteArray bytes) {
  if (bytes.endsWith('\n')) bytes.chop(1);
  if (bytes.endsWith('\r')) bytes.chop(1);
  return FromFileBytes(bytes);
}

}  // namespace

QString TextArgument(const std::string& argument) {
  QString text = QString::fromStdString(argument);
  if (!text.startsWith(QLatin1Char('@'))) return text;
  if (text.startsWith(QStringLiteral("@@"))) return text.mid(1);
  QFile file;
  if (text == QStringLiteral("@-")) {
    if (!file.open(stdin, QIODevice::ReadOnly)) throw CLI::ValidationError("standard input cannot be read");
    return Decode(file.readAll());
  }
  file.setFileName(text.mid(1));
  if (!file.open(QIODevice::ReadOnly)) {
    throw CLI::ValidationError("The file " + argument.substr(1) + " cannot be read: " +
                               file.errorString().toStdString() + ". (Write @@ for a text that begins with \"@\".)");
  }
  return Decode(file.readAll());
}

}  // namespace qbx::ctl
